// The files of an archive without compression, by its directory.

export function unzip(bytes) {
  const files = new Map(), end = bytes.lastIndexOf(Buffer.from('PK\x05\x06', 'latin1'));
  let at = bytes.readUInt32LE(end + 16);
  for (let left = bytes.readUInt16LE(end + 10); left > 0; --left) {
    const size = bytes.readUInt32LE(at + 24), path = bytes.readUInt16LE(at + 28), head = bytes.readUInt32LE(at + 42);
    const data = head + 30 + bytes.readUInt16LE(head + 26) + bytes.readUInt16LE(head + 28);
    files.set(bytes.toString('utf8', at + 46, at + 46 + path), bytes.subarray(data, data + size));
    at += 46 + path + bytes.readUInt16LE(at + 30) + bytes.readUInt16LE(at + 32);
  }
  return files;
}
