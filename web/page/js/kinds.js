// Files that the command takes beside edits and logs, told by their content.

const first_bytes = 4096;

const nothing = {tracks: [], sequences: [], rolls: [], warnings: [], fault: null};

/// Its first line that says something is one of a profile.
const isProfile = text => /^(lists|units|paper|columns\s+[\w-]+)\s*=/.test(text.split('\n').map(line => line.trim()).find(line => line && !line.startsWith('#')) ?? '');

async function orderOf(blob) {
  try {
    const {reels, pieces} = JSON.parse(await blob.text());
    return {...nothing, kind: 'an order', use: 'order', name: reels.map(reel => reel.edit).join(', '), pieces: pieces.length};
  } catch (error) {
    return {...nothing, kind: 'an order', use: null, fault: String(error.message)};
  }
}

/// What a file is that the command doesn't describe; null of all others.
export async function seenByPage({blob}) {
  if (!blob) return null;
  const head = await blob.slice(0, first_bytes).text();
  if (/^\s*\{\s*"format":\s*"quillbrook order"/.test(head)) return orderOf(blob);
  if (isProfile(head)) return {...nothing, kind: 'a profile', use: 'profile'};
  return null;
}
