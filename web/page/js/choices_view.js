// What to make, for whom, of which track, counted how; the rest folded away with its count of changes.

import {make, refill} from './elements.js';
import {changed, folded, usual} from './plans.js';
import {texts} from './texts.js';

const words = texts.choices;

function segments(name, title, values, chosen, help, onchoose) {
  const buttons = Object.entries(values).map(([value, label]) =>
    make('label', {}, make('input', {type: 'radio', name, id: `${name}-${value || 'usual'}`, value, checked: value === chosen, onchange: () => onchoose(value)}), label));
  return make('fieldset', {}, make('legend', {}, title), make('div', {class: 'segments'}, buttons), help && make('p', {class: 'help'}, help));
}

function control(name, choices, onchange) {
  const {title, help, values} = texts.options[name], id = `option-${name}`, described = `${id}-help`;
  const told = make('span', {class: 'help', id: described}, help);
  if (typeof usual[name] === 'boolean') {
    const box = make('input', {type: 'checkbox', id, checked: choices[name], 'aria-describedby': described, onchange: event => onchange(name, event.target.checked)});
    return make('div', {class: 'check'}, box, make('label', {for: id}, title), told);
  }
  if (values === undefined && typeof usual[name] === 'string') {
    const field = make('input', {type: 'text', id, autocomplete: 'off', spellcheck: 'false', value: choices[name], pattern: texts.options[name].pattern, 'aria-describedby': described,
                                 onchange: event => onchange(name, event.target.value)});
    return make('label', {class: 'option'}, title, field, told);
  }
  if (typeof usual[name] === 'number') {
    const field = make('input', {type: 'number', id, min: 0, max: name === 'splice' ? 100 : 10000, step: 1, value: choices[name], 'aria-describedby': described,
                                 onchange: event => onchange(name, whole(event.target, usual[name]))});
    return make('label', {class: 'option'}, title, field, told);
  }
  const offered = Object.entries(values).filter(([value]) => name !== 'sort' || choices.make === 'order' ? value !== 'key' || name !== 'sort' : ['roll', 'key'].includes(value));
  const list = make('select', {id, 'aria-describedby': described, onchange: event => onchange(name, event.target.value)},
                    offered.map(([value, label]) => make('option', {value, selected: value === choices[name]}, label)));
  return make('label', {class: 'option'}, title, list, told);
}

/// A number within the field's limits; what is none becomes the usual one, and stands there.
function whole(field, otherwise) {
  const number = Number.parseInt(field.value, 10);
  const kept = Number.isFinite(number) ? Math.min(Math.max(number, Number(field.min)), Number(field.max)) : otherwise;
  field.value = kept;
  return kept;
}

/// Options that ask for a kind of file show beside one.
const needed = {letters: 'scans', ends: 'had'};

/// `state`: {choices, channels, busy, ready, profiles, scans, had}; `on`: {choose(name, value), run, stop}.
export function showChoices(element, state, on) {
  const {choices} = state, parts = [];
  parts.push(segments('make', words.make.title, words.make.values, choices.make, words.make.help[choices.make], value => on.choose('make', value)));
  const {own, ...whom} = words.whom.values;
  parts.push(segments('whom', words.whom.title, state.profiles ? {...whom, own} : whom, choices.whom, words.whom.help[choices.whom], value => on.choose('whom', value)));
  if (state.channels.length > 1) {
    const values = Object.fromEntries(state.channels.map(channel => [channel, channel]));
    parts.push(segments('channel', words.channel.title, values, choices.channel, '', value => on.choose('channel', value)));
  }
  const counts = Object.fromEntries(Object.entries(words.count.values).filter(([value]) => value !== 'timecode' || choices.make === 'changes'));
  parts.push(segments('count', words.count.title, counts, choices.count, '', value => on.choose('count', value)));
  const open = element.querySelector('details')?.open;
  parts.push(make('details', {open}, make('summary', {id: 'more'}, `${words.more}: ${words.changed(changed(choices).length)}`),
                  make('div', {class: 'options'}, folded[choices.make].filter(name => !needed[name] || state[needed[name]]).map(name => control(name, choices, on.choose)))));
  parts.push(state.busy ? make('button', {class: 'main', type: 'button', id: 'stop', onclick: on.stop}, words.stop)
                        : make('button', {class: 'main', type: 'button', id: 'run', disabled: !state.ready, onclick: on.run}, words.run[choices.make]));
  refill(element, parts);
}
