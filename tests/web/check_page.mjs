#!/usr/bin/env node
// The page in a headless Chromium, used as a person does: check_page.mjs SITE QUILLBROOK MODULES [CASE ...]
//
// Each case gives what is wrong, a line each. What the page makes is held byte by byte against the command.

import {mkdirSync, mkdtempSync, readdirSync, readFileSync, rmSync, statSync, writeFileSync} from 'node:fs';
import {tmpdir} from 'node:os';
import {basename, join, resolve} from 'node:path';
import {gzipSync} from 'node:zlib';
import {exportsOf, typed, usual} from '../../web/page/js/plans.js';
import {axeOf, Desk, lacking, launch} from './driver.mjs';
import {jobs, modified, pictureOf, root} from './jobs.mjs';
import {differences, longEdit, runNative} from './native.mjs';
import {serve} from './server.mjs';

const [site, quillbrook, modules] = process.argv.slice(2, 5).map(path => resolve(path));
const missing = lacking(modules);
if (missing) {
  console.log(`web page: ${missing}, so the page wasn't opened`);
  process.exit(0);
}

// The aims are a first load of 1.5 MB, tasks of 100 ms and three times the command's time. Times are told and never wrong:
// machines differ, and what runs beside takes its share.
const most_first_load = 1_500_000;
let server = null, browser = null;

const asFiles = files => [...files].map(([name, about]) => ({name, ...about}));
const expect = (holds, line) => holds ? [] : [line];

async function withDesk(options, step) {
  const desk = await Desk.open(browser, server.address, options);
  try {
    const wrong = await step(desk);
    return [...wrong, ...desk.complaints];
  } finally {
    await desk.close();
  }
}

// ---- what is made, against the command

const shown_choices = ['make', 'whom', 'channel', 'count'];

async function setOption(desk, name, value) {
  const field = desk.page.locator(`#option-${name}`);
  if (value === true) return field.check();
  if (await field.evaluate(one => one.tagName) === 'SELECT') return field.selectOption(value);
  await field.fill(String(value));
  await field.blur();
}

/// Which cut each file is of: the one to be conformed, or one that was carried out.
async function setCuts(desk, files, carried) {
  for (const name of files.keys()) {
    const number = carried.findIndex(cut => cut.some(one => one.name === name)) + 1;
    await desk.page.locator('.files > li').filter({hasText: name}).locator('select[id^=cut-]').selectOption(String(number));
  }
}

async function prepare(desk, {files, choices, rate, carried}) {
  await desk.drop(asFiles(files).filter(({name}) => !name.includes('/')));
  await desk.dropFolders(asFiles(files).filter(({name}) => name.includes('/')));
  for (const [name, value] of Object.entries(choices)) if (shown_choices.includes(name)) await desk.choose(name, value);
  if (carried) await setCuts(desk, files, carried);
  if (rate) {
    await desk.page.locator('select[id^=ask-]').first().selectOption(rate);
    await desk.page.locator('.ask button').first().click();
    await desk.read();
  }
  await desk.page.evaluate(() => { document.querySelector('.side-choices details').open = true; });
  for (const [name, value] of Object.entries(choices)) if (!shown_choices.includes(name)) await setOption(desk, name, value);
}

async function wrongOfJob(desk, job) {
  const {name, files, plan} = job;
  await desk.load(server.address);
  await prepare(desk, job);
  if (!await desk.run()) return [`${name}: ${await desk.text('[data-state=failed]')}`];
  const pre = desk.page.locator('#commands pre'), made = Number(await pre.getAttribute('data-made'));
  await desk.page.waitForSelector('[data-found]');
  const commands = plan.findings ? [...plan.commands, plan.findings] : plan.commands;
  const wrong = expect(await pre.textContent() === commands.map(typed).join('\n'), `${name}: another line than ${typed(plan.commands.at(-1))}`);
  const there = runNative(quillbrook, files, plan.commands, made), {outputs: here} = await desk.archive();
  for (const outputs of [here, there.outputs]) for (const own of ['made/findings.json', 'made/imported.RDB', 'made/scanned.RDB']) outputs.delete(own);
  return [...wrong, ...differences(name, here, there.outputs)];
}

async function listsAreTheCommands() {
  return withDesk({}, async desk => {
    const wrong = [];
    for (const job of jobs) wrong.push(...await wrongOfJob(desk, job));
    return wrong;
  });
}

async function downloadsAreThoseOfTheArchive() {
  return withDesk({}, async desk => {
    const job = jobs.find(one => one.name === 'ferryman'), wrong = [];
    await prepare(desk, job);
    await desk.run();
    await desk.page.waitForSelector('[data-found]');
    const made = Number(await desk.page.locator('#commands pre').getAttribute('data-made'));
    const {name, outputs} = await desk.archive(), here = await desk.downloads();
    for (const one of exportsOf({...usual, ...job.choices}, job.edits, job.logs)) {
      const there = runNative(quillbrook, job.files, one.commands, made);
      wrong.push(...expect(there.outputs.get(one.name)?.equals(here.get(one.name)), `${one.name} has other bytes than the command's: ${there.err}`));
      here.delete(one.name);
    }
    outputs.delete('made/findings.json');
    return [...wrong, ...expect(name === 'ferryman.zip', `the archive is called ${name}`), ...differences('archive', outputs, here)];
  });
}

/// What is in the way of a cut stands beside the lists, and shows its row.
async function conflictsAreTold() {
  return withDesk({}, async desk => {
    const job = jobs.find(one => one.name === 'conform');
    await prepare(desk, job);
    await desk.run();
    await desk.page.waitForSelector('[data-found]');
    await desk.page.waitForSelector('[data-laid]');
    const findings = await desk.text('.findings'), head = await desk.text('.name');
    await desk.page.locator('.findings button').first().click();
    return [...expect(/^\d+ wrong/.test(findings) && /Gone/.test(findings), `the findings of a cut that can't be conformed: ${findings}`),
            ...expect(/can’t be conformed/.test(head), `the head of a cut that can't be conformed: ${head}`),
            ...expect(await desk.page.locator('#panel tr.here').count() === 1, 'a conflict does not show its row')];
  });
}

/// Folders that are dropped as a person does, with the mouse.
async function foldersAreDropped() {
  const folder = mkdtempSync(join(tmpdir(), 'quillbrook-folders-'));
  try {
    const bundle = join(folder, 'crossing.fcpxmld'), scans = join(folder, 'scans');
    mkdirSync(join(scans, 'A012'), {recursive: true});
    mkdirSync(bundle);
    writeFileSync(join(bundle, 'Info.fcpxml'), readFileSync(join(root, 'examples/formats/crossing.fcpxml')));
    for (let i = 0; i < 250; ++i) writeFileSync(join(scans, `A012/A012_${String(86400 + i).padStart(7, '0')}.dpx`), pictureOf(i));
    writeFileSync(join(scans, 'had.json'), readFileSync(join(root, 'tests/web/had.json')));
    return await withDesk({}, async desk => {
      await desk.dragIn([bundle, scans]);
      const cards = await desk.page.locator('.files > li').allInnerTexts();
      const told = [[/^crossing[.]fcpxmld/, /events/], [/^scans/, /Scanned pictures, 250 pictures, 1 row,.* 1 roll .A012./], [/^had[.]json/, /Order, .*pieces/]];
      return told.flatMap(([name, facts]) => expect(cards.some(card => name.test(card) && facts.test(card)), `${name} ${facts} stands not in ${cards.join(' / ')}`));
    });
  } finally {
    rmSync(folder, {recursive: true});
  }
}

/// What the browser prints is the page of the lists, and nothing of what is around it.
async function printsTheLists() {
  return withDesk({}, async desk => {
    await desk.page.click('#example-reel');
    await desk.made();
    await desk.page.waitForSelector('[data-laid]');
    const [frame] = await Promise.all([desk.page.waitForEvent('frameattached'), desk.page.click('#print')]);
    await frame.waitForLoadState();
    const {outputs} = await desk.archive(), page = outputs.get('made/reel.html').toString('utf8');
    const element = await frame.frameElement(), given = await element.getAttribute('srcdoc'), sandbox = await element.getAttribute('sandbox');
    const paper = await desk.paper();
    return [...expect(given === page.replace(/<script>[^]*<\/script>/, ''), 'what is printed is another page than the command’s'), ...expect(!/allow-scripts/.test(sandbox), 'scripts may run in what is printed'),
            ...expect(/12A\/1/.test(paper) && !/Drop edits|Download|Filter rows/.test(paper), `the browser’s own print: ${paper.slice(0, 300)}`)];
  });
}

async function recutIsProved() {
  return withDesk({}, async desk => {
    await desk.page.click('#example-recut');
    await desk.made();
    await desk.page.waitForSelector('[data-laid]');
    const told = await desk.page.locator('#result pre').first().textContent();
    return [...expect(/bench: proved/.test(told), `the recut tells no proof: ${told}`), ...expect(/the bench list is proved/.test(await desk.text('.name')), 'the head does not tell of the proof'), ...expect(await desk.page.locator('#tab-bench').count() === 1, 'the recut has no bench list')];
  });
}

// ---- what is read

const samplesBelow = folder => readdirSync(join(root, folder), {recursive: true}).map(name => join(folder, name)).filter(path => statSync(join(root, path)).isFile());

async function samplesAreRead() {
  return withDesk({}, async desk => {
    const wrong = [];
    for (const path of ['edl', 'otio', 'fcpxml', 'logs'].flatMap(kind => samplesBelow(`tests/samples/${kind}`)).filter(path => !path.endsWith('.md'))) {
      await desk.load(server.address);
      await desk.drop([{name: basename(path), bytes: readFileSync(join(root, path)), modified}]);
      const card = await desk.text('.files > li');
      if (!/\d/.test(card) && !/rate|\?/.test(card)) wrong.push(`${path}: ${card}`);
    }
    return wrong;
  });
}

async function hostileFilesAreTold() {
  return withDesk({}, async desk => {
    const wrong = [], each = 6;
    for (const kind of readdirSync(join(root, 'fuzz/corpus'))) {
      const paths = samplesBelow(`fuzz/corpus/${kind}`).filter(path => statSync(join(root, path)).size < 200_000);
      const some = paths.filter((path, i) => i % Math.ceil(paths.length / each) === 0);
      await desk.load(server.address);
      await desk.drop(some.map(path => ({name: `${kind} ${basename(path)}`, bytes: readFileSync(join(root, path)), modified})));
      const cards = await desk.page.locator('.files > li').allInnerTexts();
      wrong.push(...expect(cards.length === some.length, `${kind}: ${cards.length} of ${some.length} files stand there`));
      for (const card of cards) if (card.trim().split('\n').length < 2) wrong.push(`${kind}: nothing is said of ${card}`);
      if (await desk.page.locator('#run:not([disabled])').count()) await desk.run();
      wrong.push(...expect(await desk.page.locator('#example').isEnabled(), `${kind}: the page is dead`));
    }
    return wrong;
  });
}

const markup = `<img src=x onerror="document.title='broken'"><b id=forged>`;

async function namesWithMarkupAreText() {
  return withDesk({}, async desk => {
    const text = readFileSync(join(root, 'examples/16mm/heron.otio'), 'utf8').replace(/"name": "Heron"/, `"name": ${JSON.stringify(markup)}`);
    const clip = text.replace(/("OTIO_SCHEMA": "Clip\.[12]",[^]*?"name": )"[^"]*"/, (all, head) => `${head}${JSON.stringify(markup)}`);
    await desk.drop([{name: `${markup.replaceAll('/', '_')}.otio`, bytes: Buffer.from(clip), modified}]);
    if (!await desk.run()) return ['names with markup: nothing was made'];
    await desk.page.waitForSelector('[data-laid]');
    const forged = await desk.page.evaluate(() => [document, ...[...document.querySelectorAll('*')].map(one => one.shadowRoot).filter(one => one)].some(where => where.querySelector('#forged, img')));
    return [...expect(!forged, 'a name became an element'), ...expect(await desk.page.title() === 'Quillbrook', 'a name ran'),
            ...expect((await desk.text('.files > li')).includes('<img src=x'), 'the name of the file does not stand there')];
  });
}

// ---- what the page does

async function worksOffline() {
  return withDesk({}, async desk => {
    await desk.page.evaluate(() => navigator.serviceWorker.ready);
    await desk.page.waitForFunction(() => navigator.serviceWorker.controller !== null, null, {timeout: 30000});
    await server.close();
    try {
      await desk.page.reload();
      await desk.page.click('#example-log');
      return expect(await desk.made(), 'offline: nothing was made');
    } finally {
      server = await serve(site);
    }
  });
}

async function statesAreKeptAndWiped() {
  return withDesk({}, async desk => {
    const {page} = desk, wrong = [];
    await page.check('#keep');
    await page.click('#example-log');
    await desk.made();
    await page.waitForSelector('[data-laid]');
    await page.locator('#panel .tick input').first().check();
    await page.waitForTimeout(600);
    await page.reload();
    await page.waitForSelector('#run:not([disabled])');
    wrong.push(...expect(await page.locator('.files > li').count() === 3, 'the files are gone after a reload'), ...expect(await page.isChecked('#make-negative'), 'the choices are gone after a reload'));
    await desk.run();
    await page.waitForSelector('[data-laid]');
    wrong.push(...expect(await page.locator('#panel .tick input').first().isChecked(), 'the tick is gone after a reload'),
               ...expect(/forgets 3 files, the choices and 1 tick /.test(await desk.text('#wipe-help')), `wiping says: ${await desk.text('#wipe-help')}`));
    await page.click('#wipe');
    await page.waitForTimeout(300);
    await page.reload();
    await page.waitForSelector('[data-state=waiting]');
    return [...wrong, ...expect(await page.locator('.files > li').count() === 0, 'files are there after wiping')];
  });
}

async function goesByKeyboard() {
  return withDesk({}, async desk => {
    const {page} = desk, wrong = [];
    const tabTo = async id => { for (let i = 0; i < 60; ++i) { await page.keyboard.press('Tab'); if (await page.evaluate(() => document.activeElement.id) === id) return true; } return false; };
    wrong.push(...expect(await tabTo('example-log'), 'no way to the example by the Tab key'));
    await page.keyboard.press('Enter');
    await desk.made();
    await page.waitForSelector('[data-laid]');
    wrong.push(...expect(await page.evaluate(() => document.activeElement.id) === 'made', 'the focus is not at what was made'));
    wrong.push(...expect(await tabTo('tab-assembly'), 'no way to the lists by the Tab key'));
    await page.keyboard.press('ArrowRight');
    wrong.push(...expect(await page.getAttribute('#tab-pull-roll', 'aria-selected') === 'true', 'arrows do not go to the next list'));
    await page.waitForSelector('[data-laid=pull-roll]');
    await page.locator('#panel > [data-list=pull-roll] .show').first().focus();
    await page.keyboard.press('Enter');
    wrong.push(...expect(await page.locator('.strip .here').count() > 0, 'a row does not show its film in the drawing'));
    await page.locator('.findings button').first().click();
    wrong.push(...expect(await page.locator('.findings li.here').count() === 1, 'a finding is not marked'), ...expect(await page.locator('#panel tr.here').count() > 0, 'a finding does not show its row'));
    return wrong;
  });
}

async function filterShowsRows() {
  return withDesk({}, async desk => {
    await desk.page.click('#example-reel');
    await desk.made();
    await desk.page.waitForSelector('[data-laid]');
    await desk.page.fill('#filter', '12A/1');
    await desk.page.waitForFunction(() => /\d+ of \d+ rows/.test(document.querySelector('.tools output').textContent));
    const shown = await desk.page.locator('#panel tbody tr[id]:visible').count();
    return expect(shown > 0 && shown < 20, `the filter shows ${shown} rows`);
  });
}

async function needsAreAsked() {
  return withDesk({}, async desk => {
    const edl = {name: 'ferryman.edl', bytes: readFileSync(join(root, 'examples/edl/ferryman.edl')), modified}, wrong = [];
    await desk.drop([{name: 'days.ale', bytes: readFileSync(join(root, 'examples/edl/days.ale')), modified}]);
    wrong.push(...expect(/No edit yet/.test(await desk.text('#result')), 'a log alone asks for no edit'));
    await desk.drop([edl]);
    wrong.push(...expect(/needs a rate/.test(await desk.text('#result')), 'an edit list asks for no rate'));
    wrong.push(...expect(await desk.page.locator('#run').isDisabled(), 'lists may be made without a rate'));
    await desk.page.locator('select[id^=ask-]').selectOption('25');
    await desk.page.locator('.ask button').click();
    await desk.page.waitForSelector('#run:not([disabled])');
    await desk.page.locator('select[id^=ask-]').selectOption('30');
    await desk.read();
    wrong.push(...expect(/30fps/.test(await desk.page.locator('.files > li').last().innerText()), 'a rate that was given stands for ever'));
    await desk.page.locator('[id^=out-]').first().click();
    await desk.run();
    await desk.page.waitForSelector('[data-found]');
    return [...wrong, ...expect(/Add the lab’s log/.test(await desk.text('.findings')), 'missing key numbers ask for no log')];
  });
}

const span = frames => ({OTIO_SCHEMA: 'TimeRange.1', start_time: {OTIO_SCHEMA: 'RationalTime.1', rate: 24, value: 0}, duration: {OTIO_SCHEMA: 'RationalTime.1', rate: 24, value: frames}});
const trackOf = child => ({OTIO_SCHEMA: 'Track.1', kind: 'Video', children: [{source_range: span(48), ...child}]});

/// What is listed is a track with events, though an empty one lies below it.
async function emptyTracksAreLeftOut() {
  return withDesk({}, async desk => {
    const tracks = [trackOf({OTIO_SCHEMA: 'Gap.1'}), trackOf({OTIO_SCHEMA: 'Clip.1', name: 'title'})];
    const edit = {OTIO_SCHEMA: 'Timeline.1', name: 'Upper', tracks: {OTIO_SCHEMA: 'Stack.1', children: tracks}};
    await desk.drop([{name: 'upper.otio', bytes: Buffer.from(JSON.stringify(edit)), modified}]);
    if (!await desk.run()) return ['an edit with an empty track: nothing was made'];
    const line = await desk.page.locator('#commands pre').textContent();
    return expect(/--channel V2/.test(line), `another track than V2 was listed: ${line}`);
  });
}

async function fitsEverywhere() {
  const wrong = [];
  for (const [name, width, scale] of [['360 pixels', 360, 1], ['200 % of text', 1280, 2], ['360 pixels and 200 % of text', 360, 2]]) {
    wrong.push(...await withDesk({viewport: {width, height: 800}}, async desk => {
      const wide = () => desk.page.evaluate(() => document.documentElement.scrollWidth);
      await desk.page.evaluate(size => { document.documentElement.style.fontSize = size; }, `${scale * 100}%`);
      const before = await wide();
      await desk.page.click('#example-log');
      await desk.made();
      await desk.page.waitForSelector('[data-laid]');
      await desk.page.click('#download > summary');
      return [...expect(before <= width, `${name}: ${before} wide before`), ...expect(await wide() <= width, `${name}: ${await wide()} wide`)];
    }));
  }
  return wrong;
}

async function axeFindsNothing() {
  const axe = axeOf(modules), wrong = [];
  for (const colorScheme of ['light', 'dark']) {
    wrong.push(...await withDesk({colorScheme, reducedMotion: 'reduce'}, async desk => {
      const look = async state => {
        const {violations} = await desk.page.evaluate(async () => window.axe.run(document, {resultTypes: ['violations']}));
        return violations.map(one => `${colorScheme}, ${state}: ${one.id}: ${one.help}: ${one.nodes.slice(0, 3).map(node => node.target.flat().join(' ')).join(' | ')}`);
      };
      await desk.page.evaluate(axe);
      const found = await look('empty');
      await desk.page.click('#example-recut');
      await desk.made();
      await desk.page.waitForSelector('[data-laid]');
      found.push(...await look('a recut'));
      await desk.page.click('#example');
      await desk.page.waitForSelector('#tab-assembly');
      await desk.page.waitForSelector('[data-found]');
      await desk.page.click('.side summary');
      return [...found, ...await look('a reel')];
    }));
  }
  return wrong;
}

async function firstLoadIsSmall() {
  let size = 0;
  return withDesk({}, async desk => {
    const bodies = [];
    desk.page.on('response', answer => bodies.push(answer.body().then(bytes => { size += gzipSync(bytes, {level: 9}).length; }, () => {})));
    await desk.load(server.address);
    await desk.page.click('#example-log');
    await desk.made();
    await Promise.all(bodies);
    console.log(`web page: first load ${(size / 1e6).toFixed(2)} MB compressed`);
    return expect(size < most_first_load, `the first load is ${size} bytes compressed`);
  });
}

/// The longest task of the page's own thread in a trace, by the time that the processor gave it: other work of the machine
/// doesn't count, nor what this program asks the page for.
function longestTaskOf(trace) {
  const {traceEvents} = JSON.parse(trace), threads = traceEvents.filter(event => event.name === 'thread_name' && event.args.name === 'CrRendererMain');
  const ours = new Set(threads.map(event => `${event.pid} ${event.tid}`));
  const own = traceEvents.filter(event => ours.has(`${event.pid} ${event.tid}`));
  const asked = own.filter(event => event.args?.chrome_mojo_event_info?.mojo_interface_tag === 'blink.mojom.DevToolsSession').map(event => event.ts);
  const tasks = own.filter(event => event.name.endsWith('RunTask') && event.tdur !== undefined).sort((a, b) => b.tdur - a.tdur);
  const longest = tasks.find(({ts, dur}) => !asked.some(at => at >= ts && at <= ts + dur));
  return longest ? longest.tdur / 1000 : 0;
}

async function openList(desk, tab) {
  const id = (await tab.getAttribute('id')).slice('tab-'.length);
  await tab.click();
  if (id !== 'report') await desk.page.waitForSelector(`[data-laid="${id}"]`, {timeout: 60000});
}

async function longEditsAnswer() {
  const files = new Map([['long.otio', {bytes: longEdit(quillbrook, 9999), modified}]]);
  return withDesk({}, async desk => {
    await desk.drop(asFiles(files));
    await desk.page.waitForTimeout(500);
    await browser.startTracing(desk.page, {categories: ['toplevel', 'disabled-by-default-toplevel']});
    const started = performance.now();
    if (!await desk.run()) return ['a long edit makes no list'];
    const time = performance.now() - started;
    await desk.page.waitForSelector('[data-found]', {timeout: 120000});
    const told = performance.now() - started;
    await desk.page.fill('#filter', 'shot 99');
    await desk.page.waitForFunction(() => /\d+ of \d+ rows/.test(document.querySelector('.tools output').textContent), null, {timeout: 60000});
    await desk.page.fill('#filter', '');
    for (const tab of await desk.page.locator('[role=tab]').all()) await openList(desk, tab);
    const longest = longestTaskOf(await browser.stopTracing());
    const plan = (await desk.page.locator('#commands pre').textContent()).split('\n')[0].split(' ').slice(1);
    const there = runNative(quillbrook, files, [plan], 1_790_000_000);
    console.log(`web page: 9,999 events in ${Math.round(time)} ms, the command ${Math.round(there.time)} ms; all told after ${Math.round(told)} ms; longest task ${Math.round(longest)} ms`);
    return expect(longest > 0, 'no task of the page is in its trace');
  });
}

async function stopsWhenTold() {
  return withDesk({}, async desk => {
    await desk.page.click('#example-reel');
    await desk.made();
    await desk.page.evaluate(() => { document.getElementById('run').click(); document.getElementById('stop').click(); });
    await desk.page.waitForSelector('[data-state=waiting]');
    return expect(await desk.run(), 'nothing is made after a stop');
  });
}

const cases = {listsAreTheCommands, downloadsAreThoseOfTheArchive, recutIsProved, conflictsAreTold, foldersAreDropped, printsTheLists, samplesAreRead, hostileFilesAreTold, namesWithMarkupAreText, worksOffline, statesAreKeptAndWiped,
               goesByKeyboard, filterShowsRows, needsAreAsked, emptyTracksAreLeftOut, fitsEverywhere, axeFindsNothing, firstLoadIsSmall, longEditsAnswer, stopsWhenTold};
const wanted = process.argv.slice(5);
server = await serve(site);
browser = await launch(modules);
let failed = 0, passed = 0;
for (const [name, step] of Object.entries(cases)) {
  if (wanted.length && !wanted.includes(name)) continue;
  const wrong = await step().catch(error => [String(error.message).split('\n').slice(0, 6).join(' ')]);
  for (const line of wrong) console.log(`web page: ${name}: ${line}`);
  if (wrong.length) ++failed;
  else ++passed;
}
await browser.close();
await server.close();
console.log(`web page: ${passed} passed, ${failed} failed`);
process.exit(failed ? 1 : 0);
