// What is made of the examples, for the browser's build and for the command alike: {name, files, choices, edits, logs, rate, plan}.

import {readFileSync} from 'node:fs';
import {basename} from 'node:path';
import {planOf, usual} from '../../web/page/js/plans.js';

export const root = new URL('../../', import.meta.url).pathname;

/// When the files were last changed: some kinds of edits are dated by that.
export const modified = Date.UTC(2026, 8, 20, 20);
export const filesOf = paths => new Map(paths.map(path => [basename(path), {bytes: readFileSync(root + path), modified}]));

const edit = (path, rate = '') => ({name: basename(path), use: path.endsWith('.cdb') ? 'cut' : 'edit', rate, sequence: ''});

function job(name, paths, choices, chosen) {
  const {edits, logs, ...sides} = {edits: [], logs: [], olds: [], news: [], ...chosen}, rate = edits.find(one => one.rate)?.rate ?? '';
  return {name, files: filesOf(paths), choices, edits, logs, rate, plan: planOf({...usual, ...choices}, {edits, logs, ...sides})};
}

const otio = ['reel/reel', 'opticals/lantern', '16mm/heron', '23.976/ferry', '25fps/market', '29.97df/newsroom', '3perf/harbour', '65mm/desert'];
const formats = ['otio', 'edl', 'xml', 'fcpxml', 'aaf'].map(kind => `examples/formats/crossing.${kind}`);
const edl = 'examples/edl/ferryman.edl', logs = ['examples/edl/days.ale', 'examples/edl/night.flx'];
const weir = ['old-r1', 'old-r2', 'new-r1', 'new-r2'].map(name => `examples/recut/weir-${name}.otio`);
const tables = ['old-r1', 'old-r2', 'new-r1', 'new-r2'].map(name => `examples/recut/expected/weir-${name}.cdb`);
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
  job('weir table', tables.slice(2, 3), {whom: 'assistant'}, {edits: [edit(tables[2])]}),
];
