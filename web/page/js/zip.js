// An archive of files as they are, without compression: local headers, then the directory.

const table = Uint32Array.from({length: 256}, (_, n) => {
  for (let bit = 0; bit < 8; ++bit) n = n & 1 ? 0xEDB88320 ^ (n >>> 1) : n >>> 1;
  return n;
});

export function crc32(bytes) {
  let sum = 0xFFFFFFFF;
  for (const byte of bytes) sum = table[(sum ^ byte) & 0xFF] ^ (sum >>> 8);
  return (sum ^ 0xFFFFFFFF) >>> 0;
}

/// Of a date as the archive counts: years from 1980, seconds by twos.
function stamp(date) {
  const time = date.getHours() << 11 | date.getMinutes() << 5 | date.getSeconds() >> 1;
  return [time, Math.max(date.getFullYear() - 1980, 0) << 9 | (date.getMonth() + 1) << 5 | date.getDate()];
}

function record(fields) { // pairs of size and value
  const view = new DataView(new ArrayBuffer(fields.reduce((sum, [size]) => sum + size, 0)));
  let at = 0;
  for (const [size, value] of fields) {
    if (size === 2) view.setUint16(at, value, true);
    else view.setUint32(at, value, true);
    at += size;
  }
  return new Uint8Array(view.buffer);
}

/// `files`: [{name, bytes}]; names are UTF-8. Gives the pieces of a Blob.
export function zipOf(files, date) {
  const pieces = [], directory = [];
  const [time, day] = stamp(date);
  let offset = 0;
  for (const {name, bytes} of files) {
    const path = new TextEncoder().encode(name);
    const facts = [[2, 20], [2, 0x800], [2, 0], [2, time], [2, day], [4, crc32(bytes)], [4, bytes.length], [4, bytes.length],
                   [2, path.length], [2, 0]];
    const head = record([[4, 0x04034B50], ...facts]);
    directory.push(record([[4, 0x02014B50], [2, 20], ...facts, [2, 0], [2, 0], [2, 0], [4, 0], [4, offset]]), path);
    pieces.push(head, path, bytes);
    offset += head.length + path.length + bytes.length;
  }
  const size = directory.reduce((sum, piece) => sum + piece.length, 0);
  return [...pieces, ...directory,
          record([[4, 0x06054B50], [2, 0], [2, 0], [2, files.length], [2, files.length], [4, size], [4, offset], [2, 0]])];
}
