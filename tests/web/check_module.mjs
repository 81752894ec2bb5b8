#!/usr/bin/env node
// The browser's build of the command under Node, held byte by byte against the command: check_module.mjs SITE QUILLBROOK

import {readFileSync} from 'node:fs';
import {resolve} from 'node:path';
import {exportsOf, typed, usual} from '../../web/page/js/plans.js';
import {crc32, zipOf} from '../../web/page/js/zip.js';
import {runCommand} from '../../web/page/js/runs.js';
import {filesOf, jobs} from './jobs.mjs';
import {differences, runNative} from './native.mjs';

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
const plain = text => text.replace(/\/tmp\/quillbrook-\w+/g, '/tmp/');

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

const wrong = wrongOfSmallThings(), all = [...jobs, ...exported];
for (const one of all) wrong.push(...await wrongOf(one));
wrong.push(...await brokenRunsAreTold());
for (const line of wrong) console.log(`web module: ${line}`);
if (wrong.length === 0) console.log(`web module: ${all.length} jobs make the command's bytes`);
process.exit(wrong.length ? 1 : 0);
