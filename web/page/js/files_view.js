// The files that the user brought, with what was understood of each and a way to take it out.

import {make, refill} from './elements.js';
import {filesOfInput} from './folders.js';
import {texts} from './texts.js';

const words = texts.files;
const rates = ['24', '25', '30', '23.976', '29.97', '48', '50', '60'];
const most_rolls = 8;
const edit_list = 'an edit list';

function factsOf(seen) {
  const facts = [kindOf(seen)];
  if (seen.name) facts.push(`“${seen.name}”`);
  const listed = seen.tracks.filter(track => track.events > 0);
  if (listed.length) facts.push(words.events(listed[0].events), listed.map(track => track.channel).join(' '));
  if (seen.pictures) facts.push(words.pictures(seen.pictures));
  if (seen.pieces !== undefined) facts.push(words.pieces(seen.pieces));
  if (seen.rows) facts.push(words.rows(seen.rows), words.keys(seen.rows_with_key, seen.rows));
  if (seen.rate) facts.push(seen.rate);
  if (seen.rolls.length) facts.push(words.rolls(seen.rolls.length) + (seen.rolls.length <= most_rolls ? ` (${seen.rolls.join(', ')})` : ''));
  return facts.join(', ');
}

const kindOf = seen => seen.kind.replace(/^an? /, '').replace(/^./, letter => letter.toUpperCase());

function asking(file, on) {
  const {seen} = file, id = `ask-${file.id}`;
  if (seen?.needs === 'rate') {
    const list = make('select', {id}, rates.map(rate => make('option', {value: rate}, rate)));
    return make('div', {class: 'doubt'}, make('label', {for: id}, words.needsRate),
                make('div', {class: 'ask'}, list, make('button', {type: 'button', onclick: () => on.rate(file, list.value)}, words.take)));
  }
  if (file.rate && seen?.kind === edit_list) {
    const list = make('select', {id, onchange: event => on.rate(file, event.target.value)}, rates.map(rate => make('option', {value: rate, selected: rate === file.rate}, rate)));
    return make('div', {}, make('label', {for: id, class: 'small'}, words.rate), make('div', {class: 'ask'}, list));
  }
  if (seen?.sequences?.length > 1) {
    const list = make('select', {id, onchange: event => on.sequence(file, event.target.value)},
                      !file.sequence && make('option', {value: ''}, '…'),
                      seen.sequences.map(one => make('option', {value: one.name, selected: one.name === file.sequence}, one.name)));
    return make('div', {class: seen.needs ? 'doubt' : ''}, make('label', {for: id, class: 'small'}, seen.needs ? words.needsSequence : words.sequence), make('div', {class: 'ask'}, list));
  }
  return null;
}

function sides(file, on) {
  const name = `side-${file.id}`;
  return make('fieldset', {}, make('legend', {class: 'unseen'}, `${words.side}: ${file.name}`),
              make('div', {class: 'segments tiny'}, ['old', 'new'].map(side =>
                make('label', {}, make('input', {type: 'radio', name, id: `${name}-${side}`, value: side, checked: file.side === side, onchange: () => on.side(file, side)}), words[side]))));
}

/// The cut that is held against the negative, or one that was carried out on it.
function cutOf(file, numbers, on) {
  const id = `cut-${file.id}`, all = Array.from({length: numbers + 1}, (_, number) => number);
  const list = make('select', {id, onchange: event => on.cut(file, Number(event.target.value))},
                    all.map(number => make('option', {value: number, selected: number === (file.cut ?? 0)}, number ? words.carried(number) : words.held)));
  return make('div', {class: 'ask'}, make('label', {for: id, class: 'unseen'}, `${words.side}: ${file.name}`), list);
}

function warningsOf(seen) {
  const all = seen.warnings ?? [];
  if (all.length === 0) return null;
  return make('details', {class: 'small'}, make('summary', {}, words.warnings(all.length)),
              make('ul', {}, all.slice(0, 20).map(line => make('li', {class: 'wrap'}, line)), all.length > 20 && make('li', {}, words.more(all.length - 20))));
}

const isCut = seen => seen.use === 'edit' || seen.use === 'cut';

function card(file, state, on) {
  const {seen} = file, pickable = state.pick && seen && !seen.fault && isCut(seen);
  const name = pickable
    ? make('label', {class: 'pick'}, make('input', {type: 'radio', name: 'edit', id: `pick-${file.id}`, checked: file.id === state.picked, 'aria-label': words.list(file.name), onchange: () => on.pick(file)}),
           make('span', {class: 'strong wrap'}, file.name))
    : make('span', {class: 'strong wrap'}, file.name);
  const known = seen && !(seen.fault && !seen.needs);
  return make('li', {'data-reading': !seen || file.again}, make('div', {class: 'row'},
    make('div', {class: 'about'}, name,
         make('p', {class: 'help wrap'}, seen && !file.again ? factsOf(seen) : `${words.reading} …`),
         seen && !known && make('p', {class: 'fault'}, seen.fault), asking(file, on), known && warningsOf(seen),
         known && isCut(seen) && (state.sides ? sides(file, on) : state.carried > 0 && cutOf(file, state.carried, on))),
    make('button', {class: 'out', type: 'button', id: `out-${file.id}`, 'aria-label': words.remove(file.name), onclick: () => on.remove(file)}, '×')));
}

/// `state`: {files, pick: one of them is listed, picked: its id, sides: whether old and new are told,
/// carried: how many cuts that were carried out there may be}.
export function showFiles(element, state, on) {
  refill(element, state.files.length > 0 && make('ul', {class: 'files', 'aria-label': words.title}, state.files.map(file => card(file, state, on))));
}

function input(id, more, onfiles) {
  return make('input', {type: 'file', id, multiple: true, ...more, onchange: event => {
    onfiles(filesOfInput(event.target));
    event.target.value = '';
  }});
}

/// `onfiles` takes [{path, blob}].
export function dropArea(onfiles) {
  return make('div', {class: 'bring'},
    make('label', {class: 'drop'}, make('span', {class: 'strong'}, words.drop), make('span', {class: 'help'}, words.or), make('span', {class: 'help'}, words.kinds), input('files', {}, onfiles)),
    make('label', {class: 'button folder'}, words.folder, input('folder', {webkitdirectory: true}, onfiles)));
}
