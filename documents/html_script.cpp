#include "documents/html_assets.h"

namespace documents {

const char* const html_script = R"js(
'use strict';
(() => {
  const root = document.documentElement, all = (what, where = document) => [...where.querySelectorAll(what)];
  const store = { get: key => { try { return localStorage.getItem(key); } catch { return null; } },
                  set: (key, text) => { try { localStorage.setItem(key, text); } catch { } } };
  const own = 'quillbrook ' + root.dataset.document + ' ';
  root.classList.add('js');

  // A long list in slices, so that the page stays alive; `while_true` ends it.
  const rest = () => new Promise(done => setTimeout(done));
  const each = async (items, what, while_true = () => true) => {
    for (let i = 0; i < items.length; ++i) {
      if (i % 1000 === 999) await rest();
      if (!while_true()) return false;
      what(items[i]);
    }
    return true;
  };

  // Ticks: the ids of rows that are done.
  const done = new Set((store.get(own + 'done') || '').split(' ').filter(id => id));
  const show = box => box.closest('tr').classList.toggle('done', box.checked);
  for (const id of done) {
    const box = document.getElementById(id)?.querySelector('.tick input');
    if (box) { box.checked = true; show(box); }
  }
  document.addEventListener('change', event => {
    const box = event.target.closest('.tick input');
    if (!box) return;
    show(box);
    done[box.checked ? 'add' : 'delete'](box.closest('tr').id);
    store.set(own + 'done', [...done].join(' '));
  });

  // The filter, over the words of rows and their notes.
  const tools = document.querySelector('.tools'), filter = tools.querySelector('input'), told = tools.querySelector('output');
  tools.hidden = false;
  const words = new Map();
  let rows = null, asked = 0;
  const apply = async () => {
    const wanted = filter.value.trim().toLowerCase(), now = ++asked;
    store.set(own + 'filter', filter.value);
    rows ||= all('tbody tr[id]');
    let shown = 0;
    const whole = await each(rows, row => {
      if (wanted !== '' && !words.has(row)) words.set(row, row.textContent.toLowerCase());
      const hidden = wanted !== '' && !words.get(row).includes(wanted);
      if (row.hidden !== hidden) row.hidden = hidden;
      if (!hidden) ++shown;
    }, () => now === asked);
    if (!whole) return;
    for (const row of all('tr.band')) row.hidden = wanted !== '';
    told.textContent = wanted === '' ? '' : shown + ' of ' + rows.length + ' rows';
  };
  filter.value = store.get(own + 'filter') || '';
  if (filter.value) apply();
  let waiting = 0;
  filter.addEventListener('input', () => { clearTimeout(waiting); waiting = setTimeout(apply, 120); });

  // Lists are made ready one behind the other. Elements are looked for by tag, as that is quick among a million.
  const sections = [...document.querySelector('main').children].filter(one => one.tagName === 'SECTION');
  const tagged = (tag, where) => [...where.getElementsByTagName(tag)];

  // Columns.
  const hidden = new Set((store.get(own + 'columns') || '').split(' ').filter(name => name));
  const lay = section => {
    for (const table of tagged('table', section)) {
      const widths = table.dataset.widths.split('|');
      const shown = widths.filter((width, i) => !hidden.has(section.id + '.' + i));
      table.style.setProperty('--cols', shown.join(' '));
    }
    for (const box of all('.columns input', section)) {
      const hide = hidden.has(section.id + '.' + box.value);
      box.checked = !hide;
      for (const cell of all('.c' + box.value, section)) cell.classList.toggle('hide', hide);
    }
  };
  const make_columns = section => {
    const menu = section.querySelector('.columns');
    if (!menu) return;
    menu.hidden = false;
    if ([...hidden].some(name => name.startsWith(section.id + '.'))) lay(section);
    menu.addEventListener('change', event => {
      const name = section.id + '.' + event.target.value;
      hidden[event.target.checked ? 'delete' : 'add'](name);
      store.set(own + 'columns', [...hidden].join(' '));
      lay(section);
    });
  };
  // A row shows its film in the drawings of its list, and the film its row.
  const pick = (film, section, from) => {
    for (const one of all('.here')) one.classList.remove('here');
    const same = all('[data-film="' + film + '"]', section);
    for (const one of same) one.classList.add('here');
    const goal = same.find(one => one.tagName.toLowerCase() === 'tr' ? from !== 'tr' : from === 'tr');
    if (goal) goal.scrollIntoView({ block: 'nearest', inline: 'center' });
  };
  const make_drawn = async section => {
    const films = tagged('figure', section).flatMap(figure => all('[data-film]', figure));
    const drawn = new Set(films.map(one => one.dataset.film));
    if (drawn.size === 0) return;
    section.addEventListener('click', event => {
      if (event.target.closest('.tick, a, input, summary')) return;
      const one = event.target.closest('[data-film]');
      if (one && drawn.has(one.dataset.film)) pick(one.dataset.film, section, one.tagName.toLowerCase());
    });
    await each(tagged('tr', section).filter(row => drawn.has(row.dataset.film)), row => {
      row.classList.add('drawn');
      const head = row.querySelector('th'), button = document.createElement('button');
      button.className = 'show';
      button.type = 'button';
      button.setAttribute('aria-label', 'Show ' + head.textContent.trim() + ' in the drawing');
      button.append(...head.childNodes);
      head.append(button);
    });
  };
  // Columns that were hidden are so before they are seen.
  const at_once = hidden.size > 0;
  if (at_once) sections.forEach(make_columns);
  (async () => {
    for (const make of at_once ? [make_drawn] : [make_columns, make_drawn])
      for (const section of sections) {
        await rest();
        await make(section);
      }
  })();
})();
)js";

} // namespace documents
