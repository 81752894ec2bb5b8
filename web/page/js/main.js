// The page: what was brought, what is chosen, and what comes of both.

import {showChoices} from './choices_view.js';
import {make, refill} from './elements.js';
import {ask, stop} from './engine.js';
import {dropArea, showFiles} from './files_view.js';
import {filesOfDrop, itemsOf} from './folders.js';
import {exportsOf, own, planOf, usual} from './plans.js';
import {ResultView} from './result_view.js';
import {keep, kept, wipe} from './store.js';
import {texts} from './texts.js';

const state = {files: [], picked: null, choices: {...usual}, busy: false, keeps: false, ticks: {}, next: 1, view: null, turn: 0};
const parts = {};

// ---- what there is to choose from

const isReading = file => !file.seen || file.again;
const isRead = file => file.seen && !file.seen.fault;
const ofUse = (...uses) => state.files.filter(file => isRead(file) && uses.includes(file.seen.use));
const cuts = () => ofUse('edit', 'cut');
const pickedFile = () => cuts().find(file => file.id === state.picked) ?? cuts()[0] ?? null;

const asInput = file => ({name: file.name, use: file.seen.use, rate: file.rate, sequence: file.sequence});

/// The edits that are listed together: the one that is picked, or all edit lists as one programme.
function listedFiles() {
  const one = pickedFile(), isList = file => file.seen.kind === 'an edit list';
  if (!one) return [];
  return state.choices.together && isList(one) ? [one, ...cuts().filter(file => file !== one && isList(file))] : [one];
}

const most_cuts = 9;

/// Cuts that were carried out, in the order in which they were.
function carriedCuts() {
  const numbers = [...new Set(cuts().map(file => file.cut).filter(number => number > 0))].sort((a, b) => a - b);
  return numbers.map(number => cuts().filter(file => file.cut === number).map(asInput));
}

function chosen() {
  const logs = ofUse('log', 'scan').map(({name, seen}) => ({name, table: seen.kind === 'a logging table', scan: seen.use === 'scan'}));
  const edits = (state.choices.make === 'order' ? cuts() : listedFiles()).map(asInput), side = name => cuts().filter(file => file.side === name).map(asInput);
  return {edits, logs, olds: side('old'), news: side('new'), held: cuts().filter(file => !file.cut).map(asInput), carried: carriedCuts(),
          had: ofUse('order').map(({name}) => ({name})), profile: ofUse('profile').at(-1)?.name ?? ''};
}

function channels() {
  if (state.choices.make === 'conform') return [];
  if (state.choices.make === 'changes') return cuts().some(file => file.seen.use === 'edit') ? tracksOf(cuts()[0]) : [];
  return pickedFile()?.seen.use === 'edit' ? tracksOf(pickedFile()) : [];
}

/// Those with something to list; all of an edit that has nothing at all.
function tracksOf(file) {
  const plain = file.seen.tracks.filter(track => track.kind === 'plain' && track.frames > 0), full = plain.filter(track => track.events > 0);
  return (full.length ? full : plain).map(track => track.channel);
}

function isReady() {
  if (state.files.some(isReading)) return false;
  const {edits, olds, news, held} = chosen();
  return {changes: olds.length > 0 && news.length > 0, conform: held.length > 0}[state.choices.make] ?? edits.length > 0;
}

// ---- words for each state

function stateOf() {
  const words = texts.states, waits = state.files.find(file => file.seen?.needs);
  if (state.files.length === 0) return [words.nothing, words.nothingHelp];
  if (state.files.some(isReading)) return [words.reading, ''];
  if (waits?.seen.needs === 'rate') return [words.needsRate(waits.name), words.needsRateHelp];
  if (waits) return [words.needsSequence(waits.name), words.needsSequenceHelp];
  if (cuts().length === 0) return ofUse('log', 'scan').length ? [words.needsEdit, words.needsEditHelp] : [words.cantRead, words.cantReadHelp];
  if (!isReady()) return state.choices.make === 'conform' ? [words.needsHeld, words.needsHeldHelp] : [words.needsCuts, words.needsCutsHelp];
  return [words.ready, words.readyHelp];
}

function exampleCards() {
  return make('div', {class: 'examples'}, Object.entries(texts.examples).map(([id, one]) =>
    make('button', {type: 'button', id: `example-${id}`, onclick: () => tryExample(one)}, make('span', {class: 'strong'}, one.title), make('span', {class: 'help'}, one.about))));
}

function tell(words) {
  parts.status.textContent = words;
}

function showState() {
  const [title, help] = stateOf(), empty = state.files.length === 0;
  refill(parts.result, make('div', {class: 'card state', 'data-state': 'waiting'}, make('h2', {}, title), help && make('p', {class: 'soft'}, help), empty && exampleCards()));
}

function showProgress(stage) {
  const words = texts.states.stages[stage] ?? texts.states.making;
  tell(words);
  if (parts.stage?.isConnected) { parts.stage.textContent = words; return; }
  parts.stage = make('p', {}, words);
  refill(parts.result, make('div', {class: 'card state', 'data-state': 'making'}, make('h2', {}, texts.states.making), parts.stage, make('div', {class: 'bar', role: 'progressbar', 'aria-label': texts.states.making})));
}

function showFailure(lines) {
  refill(parts.result, make('div', {class: 'card state findings bad', 'data-state': 'failed', role: 'alert'}, make('h2', {}, texts.states.failed), make('p', {}, texts.states.failedHelp),
                            make('ul', {}, lines.slice(-8).map(line => make('li', {}, line.replace(/^quillbrook: /, ''))))));
  tell(texts.states.failed);
}

// ---- drawing the page anew

function refresh() {
  const {make: what} = state.choices;
  const one = what === 'copy' || what === 'negative', last = Math.max(0, ...cuts().map(file => file.cut ?? 0));
  showFiles(parts.files, {files: state.files, pick: one && cuts().length > 1, picked: pickedFile()?.id, sides: what === 'changes',
                          carried: what === 'conform' ? Math.min(last + 1, most_cuts) : 0}, fileActions);
  const offered = channels();
  if (offered.length && !offered.includes(state.choices.channel)) state.choices.channel = offered[0];
  const profiles = ofUse('profile').length > 0;
  if (state.choices.whom === own && !profiles && !state.files.some(isReading)) state.choices.whom = usual.whom;
  showChoices(parts.choices, {choices: state.choices, channels: offered, busy: state.busy, ready: isReady(), profiles, scans: ofUse('scan').length > 0, had: ofUse('order').length > 0},
              {choose, run, stop: stopRun});
  parts.outdated.hidden = !state.view || state.madeOf === signature();
  parts.keepBox.checked = state.keeps;
  parts.wipe.hidden = parts.wipeHelp.hidden = !state.keeps;
  parts.wipeHelp.textContent = texts.keep.says(state.files.length, Object.values(state.ticks).reduce((sum, ids) => sum + ids.length, 0));
}

const signature = () => JSON.stringify([state.choices, chosen()]);

function reset() {
  state.view = null;
  if (!state.busy) showState();
}

function choose(name, value) {
  state.choices[name] = value;
  if (name === 'make' && value !== 'changes' && state.choices.count === 'timecode') state.choices.count = usual.count;
  if (name === 'make') giveSides();
  refresh();
  if (!state.view && !state.busy) showState();
  remember();
}

// ---- files

function freeName(name) {
  const taken = new Set(state.files.map(file => file.name));
  for (let number = 2, free = name;; ++number) {
    if (!taken.has(free)) return free;
    free = name.replace(/(\.[^.]*)?$/, ` (${number})$1`);
  }
}

/// The first half of the cuts is taken for the old one, until somebody says otherwise.
function giveSides() {
  const all = cuts(), unsaid = all.every(file => !file.said);
  all.forEach((file, i) => {
    const old = i < Math.ceil(all.length / 2) && all.length > 1;
    if (unsaid || !file.side) file.side = old || all.length === 1 ? 'old' : 'new';
    if (unsaid || file.cut === undefined) file.cut = old ? 1 : 0;
  });
}

async function look(file) {
  try {
    const {name, blob, entries, rate, sequence} = file;
    file.seen = await ask('describe', {file: {name, blob, entries}, rate, sequence});
  } catch (error) {
    file.seen = {kind: '', fault: texts.states.broken(error.message), tracks: [], rolls: [], sequences: [], warnings: []};
  }
  file.again = false;
  giveSides();
  tell(texts.files.added(file.name));
  refresh();
  if (!state.view && !state.busy) showState();
}

/// `items`: files and folders, as `itemsOf` gives them.
async function addFiles(items, rate) {
  const added = items.map(({name, blob, entries}) => ({id: state.next++, name: name.replace(/[/\\\0]/g, '_'), blob, entries, rate: rate ?? '', sequence: '', seen: null, side: ''}));
  for (const file of added) {
    file.name = freeName(file.name);
    state.files.push(file);
  }
  reset();
  refresh();
  await Promise.all(added.map(look));
  if (added.some(file => isRead(file) && file.seen.use === 'profile')) state.choices.whom = own;
  if (added.length) state.picked = cuts().findLast(file => added.includes(file))?.id ?? state.picked;
  refresh();
  remember();
}

const fileActions = {
  remove(file) {
    state.files = state.files.filter(one => one !== file);
    tell(texts.files.taken(file.name));
    reset();
    refresh();
    document.getElementById('files').focus();
    remember();
  },
  pick(file) { state.picked = file.id; refresh(); remember(); },
  cut(file, number) { file.cut = number; file.said = true; refresh(); if (!state.view) showState(); remember(); },
  side(file, side) { file.side = side; file.said = true; refresh(); if (!state.view) showState(); remember(); },
  rate(file, rate) {
    const asked = state.files.filter(one => one === file || one.seen?.needs === 'rate');
    for (const one of asked) one.rate = rate;
    again(asked);
  },
  sequence(file, name) { file.sequence = name; again([file]); },
};

async function again(files) {
  for (const file of files) file.again = true;
  refresh();
  await Promise.all(files.map(look));
  remember();
}

const cut_of_examples = Date.UTC(2026, 8, 20, 20);

async function tryExample(one) {
  state.files = [];
  Object.assign(state.choices, usual, one.choices);
  const load = async path => {
    const name = path.replace(/^.*\//, '');
    return {name, blob: new File([await (await fetch(path)).blob()], name, {lastModified: cut_of_examples})};
  };
  await addFiles(await Promise.all(one.files.map(load)), one.rate);
  await run();
}

// ---- making

async function run() {
  if (!isReady() || state.busy) return;
  const what = chosen(), plan = planOf(state.choices, what), made = Math.floor(Date.now() / 1000), turn = ++state.turn;
  const files = state.files.filter(isRead).map(({name, blob, entries}) => ({name, blob, entries}));
  state.busy = true;
  state.view = null;
  refresh();
  showProgress('');
  try {
    const result = await ask('make', {files, plan, made}, {stage: showProgress});
    if (turn === state.turn) await showResult(result, plan, what, files);
  } catch (error) {
    if (turn === state.turn) showFailure([error.message === 'stopped' ? texts.states.stopped : error.message]);
  }
}

function finish() {
  state.busy = false;
  refresh();
}

async function showResult(result, plan, what, files) {
  finish();
  if (!result.report) return showFailure(result.told);
  const exports = state.choices.make === 'copy' || state.choices.make === 'negative' ? exportsOf(state.choices, what.edits, what.logs) : [];
  const ticks = new Set(state.ticks[result.mark] ?? []);
  const about = {
    exports, ticks, verdict: plan.noted, name: `${plan.stem}.txt`, report: plan.report, logs: what.logs.length,
    commands: plan.findings ? [...plan.commands, plan.findings] : plan.commands,
    convert: one => ask('convert', {files, commands: one.commands, name: one.name, made: result.made}),
    onticks: () => { state.ticks[result.mark] = [...ticks]; remember(); },
  };
  state.madeOf = signature();
  state.view = new ResultView(parts.result, result, about);
  state.view.show();
  refresh();
  tell(texts.states.made(result.lists?.length ?? 1));
  document.getElementById('made')?.focus({preventScroll: matchMedia('(min-width: 62rem)').matches});
  const view = state.view;
  view.tellFindings(await ask('findings'));
  parts.result.dataset.found = state.turn;
}

function stopRun() {
  ++state.turn;
  stop();
  finish();
  tell(texts.states.stopped);
  showState();
}

// ---- what is kept

let remembering = 0;
function remember() {
  if (!state.keeps) return;
  clearTimeout(remembering);
  remembering = setTimeout(() => {
    if (!state.keeps) return;
    const lasting = state.files.filter(file => file.seen?.use !== 'scan'); // gigabytes, which the browser would copy
    const files = lasting.map(({name, blob, entries, rate, sequence, side, cut, said}) => ({name, blob, entries, rate, sequence, side, cut, said}));
    keep('state', {files, choices: state.choices, ticks: state.ticks, picked: lasting.findIndex(file => file.id === state.picked)}).catch(giveUp);
  }, 150);
}

function giveUp() {
  state.keeps = false;
  refresh();
  tell(texts.keep.failed);
}

async function restore() {
  const found = await kept('state').catch(() => undefined);
  if (!found) return;
  state.keeps = true;
  state.ticks = found.ticks ?? {};
  state.choices = {...usual, ...found.choices};
  state.files = found.files.map(file => ({...file, id: state.next++, seen: null}));
  state.picked = state.files[found.picked]?.id ?? null;
  refresh();
  showState();
  await Promise.all(state.files.map(look));
}

async function wipeAll() {
  state.keeps = false;
  clearTimeout(remembering);
  state.ticks = {};
  await wipe().catch(() => {});
  refresh();
  tell(texts.keep.wiped);
  parts.keepBox.focus();
}

function keepPart() {
  parts.keepBox = make('input', {type: 'checkbox', id: 'keep', onchange: event => {
    state.keeps = event.target.checked;
    if (state.keeps) remember();
    else wipeAll();
    refresh();
  }});
  parts.wipe = make('button', {type: 'button', id: 'wipe', hidden: true, 'aria-describedby': 'wipe-help', onclick: wipeAll}, texts.keep.wipe);
  parts.wipeHelp = make('p', {class: 'help', id: 'wipe-help', hidden: true});
  return make('div', {class: 'keep'}, make('div', {class: 'check'}, parts.keepBox, make('label', {for: 'keep'}, texts.keep.title)), parts.wipe, parts.wipeHelp);
}

// ---- the frame of the page

function guide() {
  const {title, parts: all} = texts.guide;
  return make('dialog', {id: 'guide', 'aria-labelledby': 'guide-title'}, make('h2', {id: 'guide-title'}, title), all.map(([head, text]) => [make('h3', {}, head), make('p', {}, text)]),
              make('form', {method: 'dialog'}, make('button', {class: 'main'}, texts.close)));
}

function takeDrops(element) {
  const isOurs = event => event.dataTransfer?.types.includes('Files');
  element.addEventListener('dragover', event => { if (isOurs(event)) { event.preventDefault(); element.classList.add('over'); } });
  element.addEventListener('dragleave', event => { if (event.relatedTarget === null) element.classList.remove('over'); });
  element.addEventListener('drop', event => {
    if (!isOurs(event)) return;
    event.preventDefault();
    element.classList.remove('over');
    filesOfDrop(event.dataTransfer).then(files => addFiles(itemsOf(files)), () => tell(texts.files.unreadable));
  });
}

function build() {
  const help = guide();
  parts.files = make('div');
  parts.choices = make('form', {class: 'side-choices', onsubmit: event => { event.preventDefault(); run(); }});
  parts.choices.style.display = 'grid';
  parts.choices.style.gap = '1.1rem';
  parts.outdated = make('p', {class: 'doubt', hidden: true, role: 'status'}, texts.states.changed);
  parts.status = make('p', {class: 'unseen', role: 'status', 'aria-live': 'polite'});
  parts.result = make('main', {class: 'result', id: 'result', tabindex: -1, 'aria-label': texts.result.label});
  document.getElementById('page').append(
    make('header', {class: 'top'}, make('h1', {}, texts.name), make('p', {class: 'soft'}, texts.about),
         make('div', {class: 'buttons'}, make('button', {type: 'button', id: 'example', onclick: () => tryExample(texts.examples.reel)}, texts.tryExample),
              make('button', {type: 'button', id: 'help', onclick: () => help.showModal()}, texts.help))),
    make('div', {class: 'columns'}, make('aside', {class: 'side', 'aria-label': texts.files.title}, dropArea(files => addFiles(itemsOf(files))), parts.files, parts.choices, parts.outdated, keepPart()), parts.result),
    help, parts.status);
  takeDrops(document.documentElement);
}

// What waits for its turn to be laid out would be missing on paper.
addEventListener('beforeprint', () => state.view?.layAll());

build();
refresh();
showState();
restore();
if ('serviceWorker' in navigator && isSecureContext) navigator.serviceWorker.register('sw.js').catch(() => {});
