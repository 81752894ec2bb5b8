// Everything that takes time: runs of the command, and taking apart what they made. Bytes of files come as Blobs.

import makeModule from '../quillbrook.js';
import {isPicture} from './folders.js';
import {seenByPage} from './kinds.js';
import {describePlan} from './plans.js';
import {runCommand} from './runs.js';
import {drawingOf, markOf, sectionsOf, sheetOf, styleOf} from './sheets.js';
import {zipOf} from './zip.js';

const most_findings = 400, batch = 256 * 1024;
let compiled = null;
let current = null; // what was made last

async function compile() {
  const address = new URL('../quillbrook.wasm', import.meta.url);
  const answer = await fetch(address);
  if (!answer.ok) throw new Error(`${address}: ${answer.status}`);
  return WebAssembly.compile(await answer.arrayBuffer());
}

/// By their paths; folders are {name, entries}, all else {name, blob}.
async function bytesOf(files) {
  const all = new Map();
  for (const {name, blob, entries} of files) {
    for (const one of entries ?? [{blob}]) {
      const path = one.path ? `${name}/${one.path}` : name, modified = one.blob.lastModified ?? 0;
      all.set(path, one.path && isPicture(one.path) ? {blob: one.blob, modified} : {bytes: new Uint8Array(await one.blob.arrayBuffer()), modified});
    }
  }
  return all;
}

async function run(words, files, made) {
  compiled ??= compile();
  return runCommand(makeModule, await compiled, words, files, made);
}

const asFiles = (outputs, made) => [...outputs].map(([name, bytes]) => [name, {bytes, modified: made * 1000}]);
const parsed = bytes => JSON.parse(new TextDecoder().decode(bytes));

const undescribed = (name, fault) => ({path: name, kind: '', use: null, fault, tracks: [], sequences: [], rolls: [], warnings: []});

/// Scans are a log whose table was made of them.
const asScans = (seen, told, pictures) => ({...seen, kind: 'scanned pictures', use: 'scan', pictures, warnings: [...told, ...seen.warnings]});

async function describe({file, rate, sequence}) {
  const own = await seenByPage(file);
  if (own) return own;
  const scan = file.entries?.some(one => isPicture(one.path)) ?? false;
  const {commands, told} = describePlan({name: file.name, scan, rate, sequence});
  const done = await runAll(commands, await bytesOf([file]), 0, () => {}), document = done.outputs.get(told);
  if (!document) return undescribed(file.name, done.told.at(-1) ?? '');
  const seen = parsed(document).files[0];
  return scan ? asScans(seen, done.told, file.entries.length) : seen;
}

/// Commands one behind the other; what one made is there for the next.
async function runAll(commands, files, made, tell) {
  const outputs = new Map(), told = [];
  let last = null;
  for (const words of commands) {
    tell(words[0]);
    last = await run(words, new Map([...files, ...asFiles(outputs, made)]), made);
    for (const [name, bytes] of last.files) outputs.set(name, bytes);
    told.push(...last.err);
    if (last.status !== 0 && words !== commands.at(-1)) break;
  }
  return {status: last.status, out: last.out, told, outputs};
}

function summaryOf(outputs, stem) {
  const bytes = outputs.get(`made/${stem}.json`);
  if (!bytes) return {};
  const document = parsed(bytes);
  return {
    title: document.title,
    lists: document.lists.map(list => ({
      id: list.id, title: list.title, facts: list.facts, count: list.parts.reduce((sum, part) => sum + part.rows.length, 0),
    })),
  };
}

/// Of files and shots, rather than of how far the command is.
const isSaid = line => line.includes(': ');

async function make({files, plan, made}, tell) {
  current = null;
  const done = await runAll(plan.commands, await bytesOf(files), made, tell);
  const page = done.outputs.get(`made/${plan.stem}.html`);
  const text = page ? new TextDecoder().decode(page) : '';
  current = {outputs: done.outputs, plan, files, made, sections: sectionsOf(text)};
  const report = done.outputs.get(plan.report);
  return {
    status: done.status, out: done.out.slice(0, 200), told: done.told.filter(isSaid).slice(0, 200), made, ...summaryOf(done.outputs, plan.stem),
    style: styleOf(text), mark: markOf(text), report: !!report,
    outputs: [...done.outputs].map(([name, bytes]) => ({name, size: bytes.length})),
  };
}

function findingOf(finding) {
  return {severity: finding.severity, event: finding.event, channel: finding.channel, timecode: finding.timecode, name: finding.name,
          where: finding.where, what: finding.what, advice: finding.advice, code: finding.code};
}

function counted(all, shownAs = one => one) {
  const counts = {wrong: 0, doubt: 0, note: 0};
  for (const finding of all) ++counts[finding.severity];
  return {counts, shown: all.slice(0, most_findings).map(shownAs)};
}

/// What stands beside rows of the lists.
function notesOf(outputs, plan) {
  const {lists} = parsed(outputs.get(`made/${plan.stem}.json`)), rows = lists.flatMap(list => list.parts.flatMap(part => part.rows.map(row => ({list, row}))));
  return rows.flatMap(({list, row}) => row.notes.map(note => ({
    severity: 'wrong', list: list.id, row: row.id, name: [row.values.events, row.values.shot].filter(text => text).join(', '),
    what: [note.head, note.text.replace(/[.]$/, '')].filter(text => text).join(': '), advice: note.advice, code: note.code,
  })));
}

/// What `check` finds, worst first, and how many there are of each severity.
async function findings() {
  const {plan, files, outputs, made} = current;
  if (plan.noted) return counted(notesOf(outputs, plan));
  if (!plan.findings) return null;
  const done = await run(plan.findings, new Map([...await bytesOf(files), ...asFiles(outputs, made)]), made);
  const bytes = done.files.get('made/findings.json');
  if (!bytes) return null;
  outputs.set('made/findings.json', bytes);
  return counted(parsed(bytes).findings, findingOf);
}

/// Pieces in messages of about the same size.
function pour(pieces, send) {
  let some = [], size = 0, first = 0;
  pieces.forEach((piece, number) => {
    some.push(piece);
    size += piece.length;
    if (size < batch && number + 1 < pieces.length) return;
    send({pieces: some, first});
    first = number + 1;
    some = [];
    size = 0;
  });
}

function sheet({list}, tell, send) {
  const section = current.sections.find(one => one.id === list);
  const {shell, pieces} = sheetOf(section);
  send({shell, count: pieces.length});
  pour(pieces, send);
  return null;
}

function drawings(_, tell, send) {
  const html = current.sections.length ? sheetOf(current.sections[0]).drawings : '';
  const {shell, pieces} = drawingOf(html);
  if (!html) return null;
  send({shell, count: pieces.length});
  pour(pieces, send);
  return true;
}

const typeOf = name => name.endsWith('.html') ? 'text/html' : name.endsWith('.json') ? 'application/json' : 'application/octet-stream';

function output({name}) {
  const bytes = current.outputs.get(name);
  return bytes ? new Blob([bytes], {type: typeOf(name)}) : null;
}

const zip = () =>
  new Blob(zipOf([...current.outputs].map(([name, bytes]) => ({name: name.slice('made/'.length), bytes})), new Date(current.made * 1000)),
           {type: 'application/zip'});

/// An edit for other programs, beside the rest.
async function convert({files, commands, name, made}) {
  const done = await runAll(commands, await bytesOf(files), made, () => {});
  const bytes = done.outputs.get(name);
  return bytes ? {blob: new Blob([bytes])} : {fault: done.told.at(-1) ?? ''};
}

const tasks = {describe, make, findings, sheet, drawings, output, zip, convert};
let queue = Promise.resolve();

onmessage = ({data: {id, task, ...rest}}) => {
  const tell = stage => postMessage({id, stage});
  const send = part => postMessage({id, part});
  queue = queue.then(async () => {
    try {
      postMessage({id, result: await tasks[task](rest, tell, send)});
    } catch (error) {
      postMessage({id, fault: String(error?.message ?? error)});
    }
  });
};
