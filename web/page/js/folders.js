// Folders that were dropped or chosen: which of their files belong together.

const bundle = /[.](fcpxmld|otiod)$/i, edit_in_bundle = /^(Info[.]fcpxml|content[.]otio)$/;

/// By its name, as `log scan` goes by it.
export const isPicture = path => /[.](dpx|exr)$/i.test(path) && !/(^|\/)[.][^/]*$/.test(path);

const isHidden = path => path.split('/').some(part => part.startsWith('.'));

function placeOf(path) {
  const parts = path.split('/'), name = parts.at(-1);
  const at = parts.findIndex((part, i) => bundle.test(part) && i + 1 < parts.length);
  if (at >= 0) return {folder: parts[at], inside: parts.slice(at + 1).join('/'), wanted: edit_in_bundle.test(parts.slice(at + 1).join('/'))};
  if (isPicture(path)) return {folder: parts.length > 1 ? parts[0] : 'pictures', inside: parts.length > 1 ? parts.slice(1).join('/') : name, wanted: true};
  return {name, wanted: true};
}

/// Of [{path, blob}] what the page takes: {name, blob} of each file, and {name, entries: [{path, blob}]} of an edit that is a
/// folder, and of scans, which stay together below the folder that was brought. Of a bundle only its edit is read.
export function itemsOf(files) {
  const items = [], folders = new Map();
  for (const {path, blob} of files) {
    if (isHidden(path)) continue;
    const {folder, inside, name, wanted} = placeOf(path);
    if (!wanted) continue;
    if (!folder) { items.push({name, blob}); continue; }
    if (!folders.has(folder)) items.push(folders.set(folder, {name: folder, entries: []}).get(folder));
    folders.get(folder).entries.push({path: inside, blob});
  }
  return items;
}

/// What the input element gives, of files or of a folder.
export const filesOfInput = input => [...input.files].map(blob => ({path: blob.webkitRelativePath || blob.name, blob}));

const fileOf = entry => new Promise((resolve, reject) => entry.file(resolve, reject));
const someOf = reader => new Promise((resolve, reject) => reader.readEntries(resolve, reject));

async function below(entry, path) {
  if (entry.isFile) return [{path, blob: await fileOf(entry)}];
  const reader = entry.createReader(), found = [];
  for (let some = await someOf(reader); some.length > 0; some = await someOf(reader)) {
    for (const one of some) found.push(...await below(one, `${path}/${one.name}`));
  }
  return found;
}

/// What was dropped, folders with all that is in them. The entries are to be had only while the event is told.
export function filesOfDrop(transfer) {
  const entries = [...transfer.items].filter(item => item.kind === 'file').map(item => item.webkitGetAsEntry?.() ?? null);
  if (entries.some(entry => entry === null)) return Promise.resolve([...transfer.files].map(blob => ({path: blob.name, blob})));
  return Promise.all(entries.map(entry => below(entry, entry.name))).then(all => all.flat());
}
