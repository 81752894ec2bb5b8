#!/usr/bin/env node
// The browser's build of the command under Node, held byte by byte against the command: check_module.mjs SITE QUILLBROOK

import {readFileSync} from 'node:fs';
import {resolve} from 'node:path';
import {itemsOf} from '../../web/page/js/folders.js';
import {seenByPage} from '../../web/page/js/kinds.js';
import {exportsOf, folded, planOf, typed, usual} from '../../web/page/js/plans.js';
import {drawingOf, sectionsOf, sheetOf, styleOf} from '../../web/page/js/sheets.js';
import {crc32, zipOf} from '../../web/page/js/zip.js';
import {runCommand} from '../../web/page/js/runs.js';
import {filesOf, jobs, root} from './jobs.mjs';
import {differences, longEdit, runNative} from './native.mjs';

const [site, quillbrook] = process.argv.slice(2).map(path => resolve(path));
const made = 1_790_000_000;

// The module is built for workers of browsers.
process.env.TZ = 'UTC';
globalThis.self = {location: {href: ''}};
globalThis.importScripts = () => {};
const {default: makeModule} = await import(`${site}/quillbrook.js`);
const compiled = new WebAssembly.Module(readFileSync(`${site}/quillbrook.wasm`));

async function runHere(files, commands) {
  const outputs = new Map();
  let done = null;
  for (const words of commands) {
    done = await runCommand(makeModule, compiled, words, new Map([...files, ...[...outputs].map(([name, bytes]) => [name, {bytes, modified: made * 1000}])]), made);
    for (const [name, bytes] of done.files) outputs.set(name, bytes);
    if (done.status !== 0 && words !== commands.at(-1)) break;
  }
  return {...done, outputs};
}

// Folders for working files have names that nobody foresees.
const plain = text => text.replace(/[^ ]*\/quillbrook-\w+/g, '/tmp/');

async function wrongOf({name, files, plan}) {
  const here = await runHere(files, plan.commands), there = runNative(quillbrook, files, plan.commands, made);
  const wrong = differences(name, here.outputs, there.outputs);
  if (here.status !== there.status) wrong.push(`${name}: status ${here.status}, the command's ${there.status}: ${here.err.at(-1)} / ${there.err}`);
  if (here.out.join('\n') !== there.out.trimEnd()) wrong.push(`${name}: other words at standard output`);
  if (plain(here.err.join('\n')) !== plain(there.err.trimEnd())) wrong.push(`${name}: other words at standard error: ${here.err.join('\n')} / ${there.err}`);
  if (!there.outputs.has(plan.report)) wrong.push(`${name}: the command made no ${plan.report}: ${there.err}`);
  return wrong;
}

const path = 'examples/reel/reel.otio';
const exported = exportsOf(usual, [{name: 'reel.otio', use: 'edit', rate: '', sequence: ''}], [])
  .map(one => ({name: one.name, files: filesOf([path]), plan: {commands: one.commands, report: one.name}}));

function wrongOfSmallThings() {
  const wrong = [], archive = zipOf([{name: 'a/ü.txt', bytes: new TextEncoder().encode('film')}], new Date(2026, 8, 20, 20, 0, 2));
  if (crc32(new TextEncoder().encode('123456789')) !== 0xCBF43926) wrong.push('crc32: a wrong sum');
  if (archive.reduce((sum, piece) => sum + piece.length, 0) !== 30 + 8 + 4 + 46 + 8 + 22) wrong.push('zip: a wrong length');
  if (typed(['cutlist', "it's", '-o', 'a b']) !== `quillbrook cutlist 'it'\\''s' -o 'a b'`) wrong.push('typed: words of a line run into each other');
  return wrong;
}

async function brokenRunsAreTold() {
  const done = await runHere(new Map([['reel.otio', {bytes: Buffer.from('{"OTIO_SCHEMA": "Timeline.1", '), modified: 0}]]), [['cutlist', 'reel.otio', '-o', 'made/reel.txt']]);
  return done.status === 1 && /reel\.otio: .*line 1/.test(done.err.at(-1)) && done.outputs.size === 0 ? [] : [`a broken file: status ${done.status}, ${done.err}`];
}

/// Each option by itself, also where it was chosen for something else: the command knows all that it is told.
function wrongOfOptions() {
  const other = {handles: 8, splice: 3, sort: 'key', paper: 'letter', single: true, effects: true, reverse: 'first', match: 'tape', time: 'camera', together: true,
                 join: 12, whole: true, ends: true, scene: true, method: 'single', loss: '2', letters: 'KJ'};
  const wrong = [], {files, logs} = jobs.find(one => one.name === 'ferryman'), edit = {name: 'ferryman.edl', use: 'edit', rate: '25', sequence: ''};
  const had = [{name: 'had.json'}], all = new Map([...files, ['had.json', {bytes: readFileSync(`${root}tests/web/had.json`), modified: 0}]]);
  for (const what of Object.keys(folded)) {
    for (const name of Object.keys(other)) {
      const plan = planOf({...usual, make: what, [name]: other[name]}, {edits: [edit], olds: [edit], news: [edit], held: [edit], logs, had});
      const {status, err} = runNative(quillbrook, all, plan.commands, made), asked = plan.commands.at(-1).join(' ');
      if (status === 2 || /usage|expected/.test(err)) wrong.push(`${what}, ${name}: ${asked}: ${err.split('\n')[0]}`);
    }
  }
  return wrong;
}

const kilobytes = text => Math.ceil(text.length / 1000);

/// A long page comes in pieces that a browser takes one by one, and all of it does.
function wrongOfPieces() {
  const most = 60, wrong = [], files = new Map([['long.otio', {bytes: longEdit(quillbrook, 3000), modified: 0}]]);
  const {outputs} = runNative(quillbrook, files, [['cutlist', 'long.otio', '-o', 'made/long.txt', '--html', 'made/long.html', '--for', 'all']], made);
  const page = outputs.get('made/long.html').toString('utf8'), style = styleOf(page);
  if (kilobytes(style) > most || !style.includes('.note') || !style.includes('#assembly tbody .c1')) wrong.push(`the style has ${kilobytes(style)} kB`);
  const put = ({shell, pieces}) => shell.replace(/<(\w+) data-piece="(\d+)"[^>]*><\/\1>/g, (all, tag, number) => pieces[number]);
  const plain = html => html.replace(/<svg aria-hidden="true" class="patterns">.*?<\/svg>|<defs>.*?<\/defs>/gs, '');
  for (const section of sectionsOf(page)) {
    const sheet = sheetOf(section), drawing = drawingOf(sheet.drawings), parts = [sheet.shell, drawing.shell, ...sheet.pieces, ...drawing.pieces];
    const longest = Math.max(...parts.map(kilobytes));
    if (longest > most) wrong.push(`${section.id}: a piece of ${longest} kB`);
    const whole = plain(put(sheet)), rest = plain(put(drawing));
    if (rest !== plain(sheet.drawings) || whole.length + rest.length !== plain(section.html).length) wrong.push(`${section.id}: its pieces are not the list`);
  }
  return wrong;
}

function foldersAreParted() {
  const items = itemsOf(['a.edl', 'show/.DS_Store', 'show/A012/A012.0001.dpx', 'show/A012/A012.0002.DPX', 'show/._b.dpx', 'show/days.ale', 'x/Weir.fcpxmld/Info.fcpxml',
                         'x/Weir.fcpxmld/CurrentVersion.flexolibrary', 'Weir.otiod/content.otio', 'Weir.otiod/media/shot.mov', 'loose.exr'].map(path => ({path, blob: path})));
  const told = items.map(({name, entries}) => entries ? `${name}(${entries.map(one => one.path).join(' ')})` : name).join(', ');
  const wanted = 'a.edl, show(A012/A012.0001.dpx A012/A012.0002.DPX), days.ale, Weir.fcpxmld(Info.fcpxml), Weir.otiod(content.otio), pictures(loose.exr)';
  return told === wanted ? [] : [`folders are parted as ${told}`];
}

async function kindsAreTold() {
  const kinds = {'{"format": "quillbrook order", "reels": [{"edit": "R1"}], "pieces": [1, 2]}': 'order', '# lab\n\n columns pull-key = roll\n': 'profile',
                 'lists of shots\n': undefined, '{"format": "quillbrook order", ': null, 'TITLE: X\n': undefined};
  const wrong = [];
  for (const [text, use] of Object.entries(kinds)) {
    const seen = await seenByPage({name: 'x', blob: new Blob([text])});
    if (seen?.use !== use) wrong.push(`${text} is taken for ${seen?.use}`);
  }
  return wrong;
}

const wrong = [...wrongOfSmallThings(), ...wrongOfOptions(), ...wrongOfPieces(), ...foldersAreParted(), ...await kindsAreTold()], all = [...jobs, ...exported];
for (const one of all) wrong.push(...await wrongOf(one));
wrong.push(...await brokenRunsAreTold());
for (const line of wrong) console.log(`web module: ${line}`);
if (wrong.length === 0) console.log(`web module: ${all.length} jobs make the command's bytes`);
process.exit(wrong.length ? 1 : 0);
