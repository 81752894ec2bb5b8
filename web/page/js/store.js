// What the browser keeps, only where the user wants it: files, choices and ticks, in a database of this page's own.

const name = 'quillbrook';

function open() {
  return new Promise((resolve, reject) => {
    const request = indexedDB.open(name, 1);
    request.onupgradeneeded = () => request.result.createObjectStore('kept');
    request.onsuccess = () => resolve(request.result);
    request.onerror = () => reject(request.error);
  });
}

async function within(mode, step) {
  const base = await open();
  try {
    return await new Promise((resolve, reject) => {
      const transaction = base.transaction('kept', mode), request = step(transaction.objectStore('kept'));
      transaction.oncomplete = () => resolve(request?.result);
      transaction.onerror = () => reject(transaction.error);
      transaction.onabort = () => reject(transaction.error);
    });
  } finally {
    base.close();
  }
}

export const keep = (key, value) => within('readwrite', kept => kept.put(value, key));
export const kept = key => within('readonly', all => all.get(key));

/// All that the page has in this browser but its own code.
export function wipe() {
  return new Promise((resolve, reject) => {
    const request = indexedDB.deleteDatabase(name);
    request.onsuccess = request.onblocked = () => resolve();
    request.onerror = () => reject(request.error);
  });
}
