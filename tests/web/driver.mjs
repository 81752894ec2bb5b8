// A page in a headless Chromium, and what a person does on it.

import {spawnSync} from 'node:child_process';
import {existsSync, mkdirSync, mkdtempSync, readFileSync, rmSync, utimesSync, writeFileSync} from 'node:fs';
import {createRequire} from 'node:module';
import {tmpdir} from 'node:os';
import {dirname, join} from 'node:path';
import {unzip} from './unzip.mjs';

const browsers = ['/usr/bin/chromium', '/usr/bin/chromium-browser'];

/// Which package is missing, in a line; empty where all are there.
export function lacking(modules) {
  if (!browsers.some(existsSync)) return 'no Chromium here (Debian: chromium)';
  for (const name of ['playwright-core', 'axe-core']) if (!existsSync(join(modules, name))) return `no ${name} here (npm; scripts/setup_web.sh installs it)`;
  return '';
}

export const axeOf = modules => readFileSync(join(modules, 'axe-core/axe.min.js'), 'utf8');

export const launch = modules => createRequire(join(modules, 'x.js'))('playwright-core').chromium.launch({
  executablePath: browsers.find(existsSync), args: ['--no-sandbox', '--disable-gpu', '--disable-dev-shm-usage'],
});

/// Notes what no page may do: words on the console, errors, requests to anywhere else.
function watch(page, address, complaints) {
  page.on('console', message => complaints.push(`console: ${message.text()}`));
  page.on('pageerror', error => complaints.push(`error: ${error.message}`));
  page.on('request', request => { if (!request.url().startsWith(address) && !/^(blob|data|about):/.test(request.url())) complaints.push(`request: ${request.url()}`); });
}

export class Desk {
  static async open(browser, address, options = {}) {
    const desk = new Desk();
    desk.context = await browser.newContext({viewport: {width: 1280, height: 900}, timezoneId: 'UTC', acceptDownloads: true, ...options});
    desk.page = await desk.context.newPage();
    desk.complaints = [];
    desk.later = []; // what is done once no browser reads files any more
    watch(desk.page, address, desk.complaints);
    await desk.load(address);
    return desk;
  }

  async load(address) {
    await this.page.goto(address);
    await this.page.waitForSelector('[data-state=waiting]');
  }

  async close() {
    await this.context.close();
    for (const step of this.later) step();
  }

  /// Files as [{name, bytes, modified}]. The input element takes no dates, so they are given beside it.
  async drop(files) {
    await this.page.evaluate(async all => {
      const transfer = new DataTransfer();
      for (const {name, text, modified} of all) transfer.items.add(new File([Uint8Array.from(atob(text), letter => letter.charCodeAt(0))], name, {lastModified: modified}));
      const input = document.getElementById('files');
      input.files = transfer.files;
      input.dispatchEvent(new Event('change', {bubbles: true}));
    }, files.map(({name, bytes, modified}) => ({name, text: Buffer.from(bytes).toString('base64'), modified})));
    await this.read();
  }

  /// Files as above, in folders by their names, on the element for folders.
  async dropFolders(files) {
    if (files.length === 0) return;
    const folder = mkdtempSync(join(tmpdir(), 'quillbrook-folder-'));
    try {
      for (const {name, bytes, modified} of files) {
        const path = join(folder, name);
        mkdirSync(dirname(path), {recursive: true});
        writeFileSync(path, bytes);
        utimesSync(path, modified / 1000, modified / 1000);
      }
      for (const top of new Set(files.map(({name}) => name.split('/')[0]))) await this.page.setInputFiles('#folder', join(folder, top));
      await this.read();
    } finally {
      this.later.push(() => rmSync(folder, {recursive: true}));
    }
  }

  /// Paths, dragged from outside and dropped.
  async dragIn(files) {
    const session = await this.context.newCDPSession(this.page), data = {items: [], files, dragOperationsMask: 1};
    for (const type of ['dragEnter', 'dragOver', 'drop']) await session.send('Input.dispatchDragEvent', {type, x: 400, y: 400, data});
    await this.page.waitForFunction(() => document.querySelectorAll('.files > li').length > 0);
    await this.read();
  }

  /// The text of what the browser prints by itself.
  async paper() {
    const made = spawnSync('pdftotext', ['-layout', '-', '-'], {input: await this.page.pdf(), encoding: 'utf8', maxBuffer: 1 << 28});
    if (made.error) throw new Error('no pdftotext here; scripts/setup.sh installs it');
    return made.stdout;
  }

  /// Until every file was looked at.
  read() {
    return this.page.waitForFunction(() => !document.querySelector('.files [data-reading]'), null, {timeout: 120000});
  }

  choose(name, value) { return this.page.check(`#${name}-${value || 'usual'}`, {force: true}); }

  async run() {
    await this.page.click('#run');
    return this.made();
  }

  /// Whether lists were made, rather than a failure told.
  async made() {
    await this.page.waitForSelector('#made, [data-state=failed]', {timeout: 120000});
    return await this.page.locator('#made').count() === 1;
  }

  async bytesOf(button) {
    const [download] = await Promise.all([this.page.waitForEvent('download'), button.click()]);
    return {name: download.suggestedFilename(), bytes: readFileSync(await download.path())};
  }

  /// All that was made, by the names that the command gave, out of one archive.
  async archive() {
    await this.page.click('#download > summary');
    const {name, bytes} = await this.bytesOf(this.page.locator('#zip'));
    return {name, outputs: new Map([...unzip(bytes)].map(([path, content]) => [`made/${path}`, content]))};
  }

  /// Each of them by its own button. Browsers hold up pages that give many files at once, so it takes its time.
  async downloads() {
    const outputs = new Map();
    for (const button of await this.page.locator('#download [data-file]').all()) {
      await this.page.waitForTimeout(400);
      outputs.set(await button.getAttribute('data-file'), (await this.bytesOf(button)).bytes);
    }
    return outputs;
  }

  text(selector) { return this.page.locator(selector).innerText(); }
}
