// Keeps the page for later, so that it opens without a network: all of it at once, under the name of its version, which the
// build puts here with the list of files.

const version = '@VERSION@', files = [/*@FILES@*/];

self.addEventListener('install', event => {
  event.waitUntil(caches.open(version).then(cache => cache.addAll(files.map(file => new Request(file, {cache: 'no-cache'})))).then(() => self.skipWaiting()));
});

self.addEventListener('activate', event => {
  event.waitUntil(caches.keys().then(names => Promise.all(names.filter(name => name.startsWith('quillbrook ') && name !== version).map(name => caches.delete(name))))
    .then(() => self.clients.claim()));
});

self.addEventListener('fetch', event => {
  const address = new URL(event.request.url);
  if (event.request.method !== 'GET' || address.origin !== location.origin) return;
  event.respondWith(caches.open(version).then(cache => cache.match(event.request, {ignoreSearch: true})).then(found => found ?? fetch(event.request)));
});
