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
  let words = null;
  const apply = () => {
    const wanted = filter.value.trim().toLowerCase();
    words ||= all('tbody tr[id]').map(row => [row, row.textContent.toLowerCase()]);
    let shown = 0;
    for (const [row, text] of words) {
      const hidden = wanted !== '' && !text.includes(wanted);
      if (row.hidden !== hidden) row.hidden = hidden;
      if (!hidden) ++shown;
    }
    for (const row of all('tr.band')) row.hidden = wanted !== '';
    told.textContent = wanted === '' ? '' : shown + ' of ' + words.length + ' rows';
    store.set(own + 'filter', filter.value);
  };
  filter.value = store.get(own + 'filter') || '';
  if (filter.value) apply();
  let waiting = 0;
  filter.addEventListener('input', () => { clearTimeout(waiting); waiting = setTimeout(apply, 120); });

  // Columns.
  const hidden = new Set((store.get(own + 'columns') || '').split(' ').filter(name => name));
  const lay = section => {
    for (const table of all('table', section)) {
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
  for (const section of all('main > section')) {
    const menu = section.querySelector('.columns');
    if (!menu) continue;
    menu.hidden = false;
    if ([...hidden].some(name => name.startsWith(section.id + '.'))) lay(section);
    menu.addEventListener('change', event => {
      const name = section.id + '.' + event.target.value;
      hidden[event.target.checked ? 'delete' : 'add'](name);
      store.set(own + 'columns', [...hidden].join(' '));
      lay(section);
    });
  }

  // A row shows its film in the drawings of its list, and the film its row.
  const pick = (film, section, from) => {
    for (const one of all('.here')) one.classList.remove('here');
    const same = all('[data-film="' + film + '"]', section);
    for (const one of same) one.classList.add('here');
    const goal = same.find(one => one.tagName.toLowerCase() === 'tr' ? from !== 'tr' : from === 'tr');
    if (goal) goal.scrollIntoView({ block: 'nearest', inline: 'center' });
  };
  for (const section of all('main > section')) {
    const drawn = new Set(all('figure [data-film]', section).map(one => one.dataset.film));
    if (drawn.size === 0) continue;
    for (const row of all('tr[data-film]', section)) {
      if (!drawn.has(row.dataset.film)) continue;
      row.classList.add('drawn');
      const head = row.querySelector('th'), button = document.createElement('button');
      button.className = 'show';
      button.type = 'button';
      button.setAttribute('aria-label', 'Show ' + head.textContent.trim() + ' in the drawing');
      button.append(...head.childNodes);
      head.append(button);
    }
    section.addEventListener('click', event => {
      if (event.target.closest('.tick, a, input, summary')) return;
      const one = event.target.closest('[data-film]');
      if (one && drawn.has(one.dataset.film)) pick(one.dataset.film, section, one.tagName.toLowerCase());
    });
  }
})();
)js";

} // namespace documents
