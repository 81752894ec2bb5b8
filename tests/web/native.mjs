// Runs the command itself in a folder of its own, for what the browser's build is held against.

import {spawnSync} from 'node:child_process';
import {mkdirSync, mkdtempSync, readdirSync, readFileSync, rmSync, statSync, utimesSync, writeFileSync} from 'node:fs';
import {tmpdir} from 'node:os';
import {dirname, join} from 'node:path';

function filesBelow(folder, at = '') {
  return readdirSync(join(folder, at)).sort().flatMap(name => {
    const path = at ? `${at}/${name}` : name;
    return statSync(join(folder, path)).isDirectory() ? filesBelow(folder, path) : [path];
  });
}

/// `files`: a Map of names and {bytes, modified in milliseconds}; `commands`: lists of words. Gives the last status and what lies below "made/".
export function runNative(quillbrook, files, commands, made) {
  const folder = mkdtempSync(join(tmpdir(), 'quillbrook-web-'));
  try {
    mkdirSync(join(folder, 'made/csv'), {recursive: true});
    for (const [name, {bytes, modified}] of files) {
      mkdirSync(dirname(join(folder, name)), {recursive: true});
      writeFileSync(join(folder, name), bytes);
      utimesSync(join(folder, name), modified / 1000, modified / 1000);
    }
    let done = null;
    const started = performance.now();
    for (const words of commands) {
      done = spawnSync(quillbrook, words, {cwd: folder, encoding: 'utf8', maxBuffer: 1 << 28,
                                           env: {...process.env, SOURCE_DATE_EPOCH: String(made), TZ: 'UTC', LC_ALL: 'C'}});
      if (done.status !== 0 && words !== commands.at(-1)) break;
    }
    const outputs = new Map(filesBelow(join(folder, 'made')).map(name => [`made/${name}`, readFileSync(join(folder, 'made', name))]));
    return {status: done.status, out: done.stdout, err: done.stderr, outputs, time: performance.now() - started};
  } finally {
    rmSync(folder, {recursive: true});
  }
}

/// An edit of so many events, in an .otio file.
export function longEdit(quillbrook, events) {
  const {error, stdout} = spawnSync(join(dirname(quillbrook), 'bench/make_input'), ['edit', String(events)], {maxBuffer: 1 << 28});
  if (error) throw new Error(`no long edit was made: ${error.message}`);
  return stdout;
}

/// What differs between two Maps of names and bytes, a line each.
export function differences(name, mine, theirs) {
  const wrong = [];
  for (const path of new Set([...mine.keys(), ...theirs.keys()])) {
    if (!mine.has(path)) wrong.push(`${name}: ${path} is the command's alone`);
    else if (!theirs.has(path)) wrong.push(`${name}: ${path} isn't the command's`);
    else if (!Buffer.from(mine.get(path)).equals(Buffer.from(theirs.get(path)))) wrong.push(`${name}: ${path} has other bytes than the command's`);
  }
  return wrong;
}
