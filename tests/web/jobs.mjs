// What is made of the examples, for the browser's build and for the command alike: {name, files, choices, edits, logs, rate, plan}.

import {readFileSync} from 'node:fs';
import {basename} from 'node:path';
import {planOf, usual} from '../../web/page/js/plans.js';

export const root = new URL('../../', import.meta.url).pathname;

/// When the files were last changed: some kinds of edits are dated by that.
export const modified = Date.UTC(2026, 8, 20, 20);
export const filesOf = paths => new Map(paths.map(path => [basename(path), {bytes: readFileSync(root + path), modified}]));

const edit = (path, rate = '') => ({name: basename(path), use: path.endsWith('.cdb') ? 'cut' : 'edit', rate, sequence: ''});

/// `more`: files beside those of the checkout, by their paths.
function job(name, paths, choices, chosen, more = []) {
  const {edits, logs, ...sides} = {edits: [], logs: [], olds: [], news: [], ...chosen}, rate = edits.find(one => one.rate)?.rate ?? '';
  const files = new Map([...filesOf(paths), ...more.map(([path, bytes]) => [path, {bytes, modified}])]);
  return {name, files, choices, edits, logs, rate, carried: sides.carried, plan: planOf({...usual, ...choices}, {edits, logs, ...sides})};
}

const digitPair = number => Number.parseInt(String(number), 16);

/// The header of a DPX picture: KJ 29 1010, counted from foot 5867, at 01:00:00:00 and on.
export function pictureOf(frame) {
  const bytes = Buffer.alloc(2048, 0xFF), words = {0: 'SDPX', 1664: '02', 1666: '74', 1668: '00', 1670: '291010', 1676: String(5867 + Math.floor(frame / 16)).padStart(4, '0'), 1680: 'Academy\0'};
  bytes.writeUInt32BE(2048, 4);
  for (const [at, word] of Object.entries(words)) bytes.write(word, Number(at), 'latin1');
  bytes.write(String(frame % 16 * 4).padStart(2, '0'), 1668, 'latin1');
  bytes.writeFloatBE(24, 1724);
  bytes.writeUInt32BE(0x01000000 + digitPair(Math.floor(frame / 24)) * 0x100 + digitPair(frame % 24), 1920);
  return bytes;
}

const scans = Array.from({length: 40}, (_, frame) => [`A012/A012_${String(86400 + frame).padStart(7, '0')}.dpx`, pictureOf(frame)]);
const scanned = `TITLE: SCANNED
FCM: NON-DROP FRAME
001  A012     V     C        01:00:00:04 01:00:01:04 01:00:00:00 01:00:01:00
`;
const profile = '# what we send to the lab\nlists = rolls, pull-key\nunits = frames\npaper = letter\n';

const otio = ['reel/reel', 'opticals/lantern', '16mm/heron', '23.976/ferry', '25fps/market', '29.97df/newsroom', '3perf/harbour', '65mm/desert'];
const formats = ['otio', 'edl', 'xml', 'fcpxml', 'aaf'].map(kind => `examples/formats/crossing.${kind}`);
const edl = 'examples/edl/ferryman.edl', logs = ['examples/edl/days.ale', 'examples/edl/night.flx'];
const weir = ['old-r1', 'old-r2', 'new-r1', 'new-r2'].map(name => `examples/recut/weir-${name}.otio`);
const tables = ['old-r1', 'old-r2', 'new-r1', 'new-r2'].map(name => `examples/recut/expected/weir-${name}.cdb`);
const versions = ['6-r1', '6-r2'].map(name => `examples/versions/weir-${name}.otio`);
const hadOrder = readFileSync(`${root}tests/web/had.json`);
const named = paths => paths.map(path => ({name: basename(path), table: false}));

export const jobs = [
  ...otio.map(name => job(name, [`examples/${name}.otio`], {}, {edits: [edit(`examples/${name}.otio`)]})),
  ...otio.slice(0, 2).map(name => job(`${name} negative`, [`examples/${name}.otio`], {make: 'negative', count: 'frames', whom: 'all', single: true, handles: 8},
                                      {edits: [edit(`examples/${name}.otio`)]})),
  job('reel sound', ['examples/reel/reel.otio'], {channel: 'A1'}, {edits: [edit('examples/reel/reel.otio')]}),
  ...formats.map(path => job(basename(path), [path], {whom: 'lab'}, {edits: [edit(path, path.endsWith('.edl') ? '24' : '')]})),
  job('ferryman', [edl, ...logs], {make: 'negative', whom: 'cutter'}, {edits: [edit(edl, '25')], logs: named(logs)}),
  job('ferryman order', [edl, ...logs], {make: 'order', handles: 8}, {edits: [edit(edl, '25')], logs: named(logs)}),
  job('weir', weir, {make: 'changes', whom: 'cutter'}, {olds: weir.slice(0, 2).map(path => edit(path)), news: weir.slice(2).map(path => edit(path))}),
  job('weir tables', tables, {make: 'changes', count: 'timecode'}, {olds: tables.slice(0, 2).map(path => edit(path)), news: tables.slice(2).map(path => edit(path))}),
  job('conform', [...weir, ...versions], {make: 'conform', method: 'single', loss: '3p'},
      {held: versions.map(path => edit(path)), carried: [weir.slice(0, 2).map(path => edit(path)), weir.slice(2).map(path => edit(path))]}),
  job('what was not had', weir.slice(2), {make: 'order', handles: 4, ends: true}, {edits: weir.slice(2).map(path => edit(path)), had: [{name: 'had.json'}]}, [['had.json', hadOrder]]),
  job('scans', [], {letters: '0274=KJ'}, {edits: [{name: 'scanned.edl', use: 'edit', rate: '24', sequence: ''}], logs: [{name: 'A012', scan: true}]}, [...scans, ['scanned.edl', Buffer.from(scanned)]]),
  job('scans and a log', ['examples/edl/days.ale'], {}, {edits: [{name: 'scanned.edl', use: 'edit', rate: '24', sequence: ''}], logs: [{name: 'days.ale'}, {name: 'A012', scan: true}]},
      [...scans, ['scanned.edl', Buffer.from(scanned)]]),
  job('folder of an edit', [], {}, {edits: [{name: 'crossing.fcpxmld', use: 'edit', rate: '', sequence: ''}]}, [['crossing.fcpxmld/Info.fcpxml', readFileSync(`${root}examples/formats/crossing.fcpxml`)]]),
  job('profile', ['examples/reel/reel.otio'], {whom: 'own'}, {edits: [edit('examples/reel/reel.otio')], profile: 'lab.txt'}, [['lab.txt', Buffer.from(profile)]]),
  job('weir table', tables.slice(2, 3), {whom: 'assistant'}, {edits: [edit(tables[2])]}),
];
