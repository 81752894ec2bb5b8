// One list as the command writes it, below a shadow root: rows come in pieces, so that the page answers meanwhile.

import {ask} from './engine.js';
import {breathe, inSlices, make} from './elements.js';
import {Pieces} from './pieces.js';
import {texts} from './texts.js';

// What the page around it says already, and what lies on the sheet by itself elsewhere.
const ownStyle = `
  :host { display: block; background: none; }
  section { border: 0; border-radius: 0; margin: 0; padding: 0; background: none; }
  .head { border: 0; padding: 0; margin-top: .9rem; }
  .head h2, .head .aside { display: none; }
  .head p { display: none; }
  figure { margin: 0; }
  figcaption { padding: .4rem 0; }
  .patterns { position: absolute; width: 0; height: 0; }
  tr[data-film] { cursor: pointer; }
  .note { font-size: .85rem; }
  @media screen and (max-width: 46rem) { section { margin: 0; padding: 0; } }
  @media screen and (prefers-color-scheme: dark) { figure { border-radius: .3rem; } }
`;

const sheets = new Map(); // of a style's text, made once

function sheetOf(css) {
  if (!sheets.has(css)) {
    const sheet = new CSSStyleSheet();
    sheet.replaceSync(css);
    sheets.set(css, sheet);
  }
  return sheets.get(css);
}

function rootOf(host, css) {
  const root = host.shadowRoot ?? host.attachShadow({mode: 'open'});
  root.adoptedStyleSheets = [sheetOf(css), sheetOf(ownStyle)];
  return root;
}

/// The drawing of the first list, with clicks on its film.
export class Drawing {
  constructor(host, css, onpick) {
    this.root = rootOf(host, css);
    this.pieces = new Pieces(this.root);
    this.root.addEventListener('click', event => {
      const film = event.target.closest('[data-film]')?.dataset.film;
      if (film) onpick(film);
    });
  }

  /// False where the list has none.
  async load() {
    const any = await ask('drawings', {}, {part: part => this.pieces.take(part)});
    await this.pieces.settle();
    return any === true;
  }

  show(film) {
    this.pieces.putWith(filmMark(film));
    mark(this.root, film);
    this.root.querySelector('.here')?.scrollIntoView({block: 'nearest', inline: 'center'});
  }
}

const filmMark = film => `data-film="${film}"`;

export class Sheet {
  /// `ticks`: a Set of the ids of rows; `on`: {tick(), pick(film)}.
  constructor(host, css, list, ticks, on) {
    Object.assign(this, {host, list, ticks, on, root: rootOf(host, css), words: null, hidden: new Set(), left_out: new CSSStyleSheet()});
    this.root.adoptedStyleSheets.push(this.left_out);
  }

  async load() {
    this.pieces = new Pieces(this.root, piece => this.settle(piece));
    await ask('sheet', {list: this.list}, {part: part => this.pieces.take(part)});
    await this.pieces.settle();
    this.listen();
  }

  /// What was ticked or left out before holds for rows that come later.
  settle(piece) {
    for (const box of piece.querySelectorAll('.tick input')) {
      const row = box.closest('tr');
      box.checked = this.ticks.has(row.id);
      row.classList.toggle('done', box.checked);
    }
    if (this.hidden.size) for (const table of piece.querySelectorAll('table')) this.layColumns(table);
    for (const head of piece.querySelectorAll('tr[data-film] th')) if (head.textContent.trim()) this.addButton(head);
  }

  /// A click on a row is for eyes and fingers; the keyboard has a button in its first cell.
  addButton(head) {
    const button = make('button', {class: 'show', type: 'button', 'aria-label': `${texts.result.show} ${head.textContent.trim()}`});
    button.append(...head.childNodes);
    head.append(button);
  }

  listen() {
    this.root.addEventListener('change', event => {
      const box = event.target.closest('.tick input');
      if (box) return this.tick(box);
      if (event.target.closest('.columns')) this.showColumn(event.target);
    });
    this.root.addEventListener('click', event => {
      if (event.target.closest('.tick, a, input, summary, label')) return;
      const film = event.target.closest('tr[data-film]')?.dataset.film;
      if (film) this.on.pick(film);
    });
    for (const menu of this.root.querySelectorAll('.columns')) menu.hidden = false;
  }

  tick(box) {
    const row = box.closest('tr');
    row.classList.toggle('done', box.checked);
    this.ticks[box.checked ? 'add' : 'delete'](row.id);
    this.on.tick();
  }

  /// By a rule, which holds for rows that come later too.
  showColumn(box) {
    this.hidden[box.checked ? 'delete' : 'add'](box.value);
    this.left_out.replaceSync(this.hidden.size ? `${[...this.hidden].map(column => `.c${column}`).join(', ')} { display: none !important; }` : '');
    for (const table of this.root.querySelectorAll('table')) this.layColumns(table);
  }

  layColumns(table) {
    const widths = table.dataset.widths.split('|');
    table.style.setProperty('--cols', widths.filter((width, i) => !this.hidden.has(String(i))).join(' '));
  }

  /// Shows the rows that hold a text, and tells how many of how many; a later call ends this one.
  async filter(text, told) {
    const wanted = text.trim().toLowerCase(), turn = this.turn = {};
    const current = () => this.turn === turn;
    if (wanted === '' && !this.words) return;
    this.words ??= new Map();
    let shown = 0;
    if (!await this.pieces.putAll() || !current()) return;
    const rows = [...this.root.querySelectorAll('tbody tr[id]')];
    const whole = await inSlices(rows, row => {
      if (!this.words.has(row)) this.words.set(row, row.textContent.toLowerCase());
      const hide = wanted !== '' && !this.words.get(row).includes(wanted);
      if (row.hidden !== hide) row.hidden = hide;
      if (!hide) ++shown;
    }, current);
    if (!whole) return;
    for (const band of this.root.querySelectorAll('tr.band')) band.hidden = wanted !== '';
    told(wanted === '' ? '' : texts.result.shown(shown, rows.length));
  }

  /// Marks what is of a film, and brings the first of it into sight.
  async show(film, scroll) {
    this.pieces.putWith(filmMark(film));
    mark(this.root, film);
    const row = this.root.querySelector(`tr[data-film="${CSS.escape(film)}"]`);
    if (row && scroll) await reveal(row);
    return row !== null;
  }

  async showRow(id) {
    this.pieces.putWith(` id="${id}"`);
    const row = this.root.getElementById(id);
    markAll(this.root, row ? [row] : []);
    if (row) await reveal(row);
  }

  layAll() {
    this.pieces?.putAllAtOnce();
  }
}

async function reveal(row) {
  row.scrollIntoView({block: 'center'});
  await breathe(); // rows above have their true height only now
  row.scrollIntoView({block: 'center'});
}

function markAll(root, marked) {
  for (const one of root.querySelectorAll('.here')) one.classList.remove('here');
  for (const one of marked) one.classList.add('here');
}

const mark = (root, film) => markAll(root, root.querySelectorAll(`[data-film="${CSS.escape(film)}"]`));
