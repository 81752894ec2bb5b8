// Serves a folder on the loopback address, as any file server does, and tells what was asked for.

import {createServer} from 'node:http';
import {readFile} from 'node:fs/promises';
import {extname, join, normalize} from 'node:path';

const types = {'.html': 'text/html; charset=utf-8', '.js': 'text/javascript', '.css': 'text/css', '.json': 'application/json',
               '.svg': 'image/svg+xml', '.wasm': 'application/wasm'};

export async function serve(folder) {
  const server = createServer(async (request, answer) => {
    const path = normalize(decodeURIComponent(new URL(request.url, 'http://localhost').pathname));
    try {
      const bytes = await readFile(join(folder, path.endsWith('/') ? path + 'index.html' : path));
      answer.writeHead(200, {'Content-Type': types[extname(path)] ?? (path.endsWith('/') ? types['.html'] : 'application/octet-stream')});
      answer.end(bytes);
    } catch {
      answer.writeHead(404);
      answer.end();
    }
  });
  await new Promise(resolve => server.listen(0, '127.0.0.1', resolve));
  return {address: `http://127.0.0.1:${server.address().port}/`, close: () => new Promise(resolve => { server.closeAllConnections(); server.close(resolve); })};
}
