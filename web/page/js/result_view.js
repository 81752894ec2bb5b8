// What was made: name, facts, the reel as a strip, what is wrong, then the lists as tabs with counts.

import {ask} from './engine.js';
import {download, inSlices, make, refill} from './elements.js';
import {listStem, typed} from './plans.js';
import {Drawing, Sheet} from './sheet_view.js';
import {texts} from './texts.js';

const words = texts.result;
const first_findings = 3, lines_together = 200;

const kindOf = name => name.endsWith('-lists.txt') ? 'lists' : name.slice(name.lastIndexOf('.') + 1);

function factsOf(result, proof) {
  const {title} = result, length = result.lists?.flatMap(list => list.facts).find(fact => fact.name === words.length);
  return [title?.track, title?.gauge, title?.rate, length?.text.trim().split(/\s{2,}/)[0], proof].filter(text => text).join(', ');
}

function proofOf({status, out}) {
  const says = pattern => out.some(line => pattern.test(line));
  if (status === 3) return says(/^bench: proved/) ? words.benchProved : words.notProved;
  return says(/^(\w+: )?proved/) ? words.proved : '';
}

const verdictOf = ({status}) => status === 0 ? words.conforms : words.conformsNot;

const sentence = text => text ? text[0].toUpperCase() + text.slice(1) + '.' : '';

/// A report in blocks, of which a browser lays out those that are in sight.
function* blocksOf(text) {
  for (let at = 0, end = 0; at < text.length; at = end) {
    let lines = 0;
    for (; lines < lines_together && end < text.length; ++lines) end = text.indexOf('\n', end) + 1 || text.length;
    yield {block: text.slice(at, end), lines};
  }
}

async function save(name) {
  download(name.slice(name.lastIndexOf('/') + 1), await ask('output', {name}));
}

const script = /<script>[^]*<\/script>/;

/// Prints the page as the command made it, in a frame where nothing of it can run.
async function print(name) {
  const blob = await ask('output', {name});
  const frame = make('iframe', {sandbox: 'allow-same-origin allow-modals', class: 'unseen', title: words.print, 'aria-hidden': true, tabindex: -1});
  frame.srcdoc = (await blob.text()).replace(script, '');
  document.querySelector('#printed')?.remove();
  frame.id = 'printed';
  document.body.append(frame);
  await new Promise(resolve => frame.addEventListener('load', resolve, {once: true}));
  frame.contentWindow.print();
}

export class ResultView {
  /// `about`: {exports, convert(files), ticksOf(mark), onticks}.
  constructor(element, result, about) {
    Object.assign(this, {element, result, about, sheets: new Map(), picked: null, findings: null});
  }

  show() {
    const {result} = this, html = result.outputs.find(file => file.name.endsWith('.html'));
    this.strip = make('div', {class: 'card strip', hidden: true, role: 'group', 'aria-label': words.strip, tabindex: 0});
    this.doubts = make('div', {class: 'card findings', hidden: true, 'aria-live': 'polite'});
    refill(this.element, this.head(html), this.strip, this.doubts, this.lists(), this.toldCard(), this.commandsCard());
    if (html) this.drawStrip();
    if (result.lists?.length) this.open(result.lists[0].id);
    else this.openReport();
  }

  head(html) {
    const {result} = this, name = result.title?.edit || this.about.name;
    return make('div', {class: 'name'},
      make('div', {}, make('h2', {tabindex: -1, id: 'made'}, name), make('p', {class: 'soft wrap'}, factsOf(result, this.about.verdict ? verdictOf(result) : proofOf(result)))),
      make('div', {class: 'buttons'}, html && make('button', {type: 'button', id: 'print', onclick: () => print(html.name)}, words.print), this.menu()));
  }

  menu() {
    const row = (name, about, onclick) => make('li', {}, make('button', {type: 'button', class: 'plain', 'data-file': name, onclick}, name.slice(name.indexOf('/') + 1)), make('span', {class: 'soft'}, about));
    const made = this.result.outputs.filter(file => !/(imported|scanned)[.]RDB$/.test(file.name))
      .map(file => row(file.name, `${words.kinds[kindOf(file.name)] ?? ''} ${texts.size(file.size)}`, () => save(file.name)));
    const others = this.about.exports.map(one => row(one.name, words.kinds[kindOf(one.name)], () => this.convert(one)));
    return make('details', {class: 'menu', id: 'download'}, make('summary', {}, words.download),
      make('div', {}, make('button', {type: 'button', class: 'main', id: 'zip', onclick: () => this.saveAll()}, words.all), make('ul', {}, made, others),
           make('p', {class: 'fault', hidden: true, id: 'download-fault', role: 'alert'})));
  }

  async saveAll() {
    download(`${listStem(this.about.name)}.zip`, await ask('zip'));
  }

  async convert(one) {
    const done = await this.about.convert(one), told = this.element.querySelector('#download-fault');
    told.hidden = !done.fault;
    told.textContent = done.fault ? `${words.exported(one.name.slice(one.name.indexOf('/') + 1))}: ${done.fault}` : '';
    if (done.blob) download(one.name.slice(one.name.lastIndexOf('/') + 1), done.blob);
  }

  async drawStrip() {
    const host = make('div');
    this.strip.append(host);
    this.strip.hidden = false;
    this.drawing = new Drawing(host, this.result.style, film => this.pick(film, true));
    this.strip.hidden = !await this.drawing.load();
  }

  lists() {
    const lists = this.result.lists ?? [];
    const tab = (id, label) => make('button', {type: 'button', role: 'tab', id: `tab-${id}`, 'aria-controls': 'panel', 'aria-selected': 'false', tabindex: -1, onclick: () => id === 'report' ? this.openReport() : this.open(id)}, label);
    this.tabs = make('div', {class: 'tabs', role: 'tablist', 'aria-label': words.lists, onkeydown: event => this.step(event)},
                     lists.map(list => tab(list.id, `${list.title} (${list.count.toLocaleString('en')})`)), this.result.report && tab('report', words.report));
    this.field = make('input', {type: 'search', id: 'filter', autocomplete: 'off', oninput: () => this.filterSoon()});
    this.counted = make('output', {class: 'soft', for: 'filter', 'aria-live': 'polite'});
    this.tools = make('div', {class: 'tools', role: 'search'}, make('label', {for: 'filter'}, words.filter), this.field, this.counted);
    this.panel = make('div', {role: 'tabpanel', id: 'panel', 'aria-labelledby': 'tab-report', tabindex: 0});
    this.card = make('div', {class: 'card'}, this.tabs, this.tools, this.panel);
    return this.card;
  }

  /// Arrows go from tab to tab, as the pattern of tabs has it.
  step(event) {
    const all = [...this.tabs.children], at = all.indexOf(document.activeElement);
    const next = {ArrowRight: at + 1, ArrowLeft: at - 1, Home: 0, End: all.length - 1}[event.key];
    if (next === undefined || at < 0) return;
    event.preventDefault();
    const tab = all[(next + all.length) % all.length];
    tab.focus();
    tab.click();
  }

  select(id) {
    for (const tab of this.tabs.children) {
      const chosen = tab.id === `tab-${id}`;
      tab.setAttribute('aria-selected', String(chosen));
      tab.tabIndex = chosen ? 0 : -1;
    }
    this.panel.setAttribute('aria-labelledby', `tab-${id}`);
    for (const page of this.panel.children) page.hidden = page.dataset.list !== id;
    this.tools.hidden = id === 'report';
    this.opened = id;
  }

  open(id) {
    if (!this.sheets.has(id)) {
      const host = make('div', {'data-list': id});
      this.panel.append(host);
      const sheet = new Sheet(host, this.result.style, id, this.about.ticks, {tick: this.about.onticks, pick: film => this.pick(film, false)});
      this.sheets.set(id, {sheet, loaded: sheet.load()});
      this.counted.textContent = words.laying;
    }
    this.select(id);
    const {sheet, loaded} = this.sheets.get(id);
    return loaded.then(async () => {
      if (this.opened !== id) return;
      this.counted.textContent = '';
      this.element.dataset.laid = id;
      await this.filter();
      if (this.picked) sheet.show(this.picked, false);
    });
  }

  async openReport() {
    if (![...this.panel.children].some(page => page.dataset.list === 'report')) {
      const page = make('pre', {'data-list': 'report', class: 'report', tabindex: 0, 'aria-label': words.report});
      this.panel.append(page);
      const report = this.result.outputs.find(file => file.name === this.about.report);
      const text = await (await ask('output', {name: report.name})).text();
      inSlices(blocksOf(text), ({block, lines}) => page.append(make('div', {style: `--lines:${lines}`}, block)));
    }
    this.select('report');
  }

  filterSoon() {
    clearTimeout(this.waiting);
    this.waiting = setTimeout(() => this.filter(), 120);
  }

  filter() {
    const open = this.sheets.get(this.opened);
    return open?.sheet.filter(this.field.value, told => { this.counted.textContent = told; });
  }

  /// A row, a finding or a piece of the drawing shows the other two.
  pick(film, scroll) {
    this.picked = film;
    for (const {sheet} of this.sheets.values()) sheet.show(film, scroll && sheet.list === this.opened);
    this.drawing?.show(film);
    this.markDoubts(film);
  }

  markDoubts(film) {
    for (const line of this.doubts.querySelectorAll('li')) line.classList.toggle('here', line.dataset.film === film);
  }

  async showRow(list, row) {
    await this.open(list);
    this.sheets.get(list).sheet.showRow(row);
    this.markDoubts(row);
  }

  layAll() {
    this.sheets.get(this.opened)?.sheet.layAll();
  }

  async showEvent(film) {
    if (this.opened === 'report' && this.result.lists?.length) await this.open(this.result.lists[0].id);
    await this.sheets.get(this.opened)?.loaded;
    this.pick(film, true);
  }

  finding(one) {
    const film = one.row ?? (one.event ? `event-${one.event}` : null), show = () => one.row ? this.showRow(one.list, one.row) : this.showEvent(film);
    const place = [one.event && words.event(one.event), one.name, one.timecode].filter(text => text).join(', ');
    return make('li', {'data-film': film}, make('b', {}, `${words.severity[one.severity]}${place ? `: ${place}` : ''}. `), `${sentence(one.what)} `,
                make('span', {class: 'soft'}, `${sentence(one.advice)} ${one.where ?? ''} `), film && make('button', {type: 'button', class: 'plain', 'aria-label': `${words.show} ${place}`, onclick: show}, words.show));
  }

  /// `found`: {counts, shown}; null where nothing was looked for.
  tellFindings(found) {
    if (!found) return;
    const {counts, shown} = found;
    this.doubts.hidden = false;
    this.doubts.classList.toggle('bad', counts.wrong > 0);
    const lines = shown.map(one => this.finding(one)), rest = counts.wrong + counts.doubt + counts.note - shown.length;
    const lacking = shown.some(one => one.code === 'no-key') && !this.about.logs && make('p', {class: 'ask'}, words.rolls);
    const more = lines.length > first_findings && make('details', {}, make('summary', {}, texts.files.more(lines.length - first_findings)), make('ul', {}, lines.slice(first_findings)));
    refill(this.doubts, make('h3', {}, words.findings(counts.wrong, counts.doubt), counts.note > 0 && make('span', {class: 'soft'}, ` · ${words.notes(counts.note)}`)),
           lacking, make('ul', {}, lines.slice(0, first_findings)), more, rest > 0 && make('p', {class: 'help'}, words.further(rest)));
  }

  toldCard() {
    const proof = this.result.out.filter(line => line), told = this.result.told;
    if (proof.length + told.length === 0) return null;
    const open = this.result.status === 3;
    return make('details', {class: 'card', open}, make('summary', {}, open ? words.steps : words.told), make('pre', {tabindex: 0}, [...proof, ...told].join('\n')));
  }

  commandsCard() {
    return make('details', {class: 'card', id: 'commands'}, make('summary', {}, words.commands), make('p', {class: 'help'}, words.commandsHelp),
                make('pre', {tabindex: 0, 'data-made': this.result.made}, this.about.commands.map(typed).join('\n')));
  }
}
