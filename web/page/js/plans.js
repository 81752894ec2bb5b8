// From what was chosen to command lines. A plan is what the command would be told in a folder with these files:
// {commands: [[words]], lists: names of what holds the lists}. Folders that it writes into lie below "made/".

/// What stands where nothing was chosen. Of the folded options only those that differ go on a line.
export const usual = {
  make: 'copy', whom: '', channel: 'V1', count: 'feet',
  handles: 0, splice: 1, sort: 'roll', paper: '', single: false, effects: false, reverse: '', match: '', time: '',
  together: false, join: 1, whole: false, scene: false,
};
export const folded = {
  copy: ['handles', 'splice', 'sort', 'single', 'together', 'match', 'time', 'effects', 'reverse', 'paper'],
  negative: ['handles', 'splice', 'sort', 'single', 'together', 'match', 'time', 'effects', 'reverse', 'paper'],
  order: ['handles', 'join', 'sort', 'whole', 'match', 'time', 'effects', 'reverse', 'paper'],
  changes: ['splice', 'scene', 'match', 'time', 'effects', 'reverse', 'paper'],
};

export const changed = choices => folded[choices.make].filter(name => choices[name] !== usual[name]);

const logTable = 'made/log.RDB';
export const listStem = name => name.replace(/^.*\//, '').replace(/\.[^.]*$/, '') || 'list';
/// A name that begins with a dash isn't taken for an option.
const path = name => name.startsWith('-') ? './' + name : name;
const option = (name, value) => value === '' || value === undefined || value === null ? [] : [name, String(value)];

/// `tables`: among the logs are tables of the command's own already.
function logCommands(logs, rate) {
  if (logs.length === 0) return {table: '', commands: []};
  if (logs.length === 1 && logs[0].table) return {table: path(logs[0].name), commands: []};
  const texts = logs.filter(log => !log.table), tables = logs.filter(log => log.table);
  const imported = tables.length ? 'made/imported.RDB' : logTable, commands = [];
  if (texts.length) commands.push(['log', 'import', ...texts.map(log => path(log.name)), '-o', imported, ...option('--rate', rate)]);
  if (tables.length) {
    commands.push(['log', 'merge', ...tables.map(log => path(log.name)), ...(texts.length ? [imported] : []), '-o', logTable]);
  }
  return {table: logTable, commands};
}

function reading(choices, edit, log) {
  return [...option('--rate', edit.rate), ...option('--sequence', edit.sequence), ...option('--log', log),
          ...(log ? [...option('--match', choices.match), ...option('--log-time', choices.time)] : []),
          ...(choices.effects ? ['--all-effects'] : []), ...option('--edl-reverse', choices.reverse)];
}

function pages(choices, stem, json) {
  return ['--html', `made/${stem}.html`, json, `made/${stem}.json`, '--csv', 'made/csv', '--text', `made/${stem}-lists.txt`,
          ...option('--for', choices.whom), ...option('--paper', choices.paper)];
}

const counted = choices => choices.count === 'frames' ? ['--frames'] : ['--feet'];

/// `edits`: [{name, use, rate, sequence}], the first one's choices of rate and sequence hold for all.
function listsPlan(choices, edits, logs) {
  const edit = edits[0], stem = listStem(edit.name);
  const report = `made/${stem}.txt`;
  const more = [...pages(choices, stem, '--json'), ...counted(choices), ...(choices.handles ? ['--handles', String(choices.handles)] : []),
                ...(choices.sort === 'key' ? ['--sort-by-key'] : []), '--prove'];
  if (edit.use === 'cut') return {commands: [['print', path(edit.name), '-o', report, ...more]], stem, report};
  const log = logCommands(logs, edit.rate);
  const paths = edits.map(one => path(one.name)), read = [...reading(choices, edit, log.table), '--channel', choices.channel];
  const negative = choices.make === 'negative' ? ['--neg-cut'] : [];
  const splice = choices.splice === usual.splice ? [] : ['--splice-frames', String(choices.splice)];
  const single = choices.single ? ['--single-layer', '1,2,3,4'] : [];
  return {
    commands: [...log.commands, ['cutlist', ...paths, '-o', report, ...read, ...negative, ...splice, ...single, '--no-progress', ...more]],
    findings: ['check', ...paths, ...read, ...negative, ...splice, '--json', 'made/findings.json'],
    stem, report,
  };
}

function orderPlan(choices, edits, logs) {
  const edit = edits[0], log = edits.some(one => one.use === 'edit') ? logCommands(logs, edit.rate) : {table: '', commands: []};
  const sort = {roll: '', key: '', scene: 'scene', edit: 'edit'}[choices.sort];
  return {
    commands: [...log.commands,
               ['order', ...edits.map(one => path(one.name)), '-o', 'made/order.txt', '--json', 'made/order-steps.json',
                ...reading(choices, edit, log.table), '--channel', choices.channel, '--handles', String(choices.handles),
                '--join', String(choices.join), ...option('--sort', sort), ...(choices.whole ? ['--whole-takes'] : []), '--prove',
                ...pages(choices, 'order', '--lists-json'), ...(choices.count === 'frames' ? [] : ['--feet'])]],
    stem: 'order', report: 'made/order.txt',
  };
}

function changesPlan(choices, olds, news, logs) {
  const edit = [...olds, ...news].find(one => one.use === 'edit');
  const log = edit ? logCommands(logs, edit.rate) : {table: '', commands: []};
  const read = edit ? reading(choices, {rate: edit.rate}, log.table) : [];
  const splice = choices.splice === usual.splice || !edit ? [] : ['--splice-frames', String(choices.splice)];
  return {
    commands: [...log.commands,
               ['changelist', '--old', ...olds.map(one => path(one.name)), '--new', ...news.map(one => path(one.name)),
                '-o', 'made/changes.txt', '--json', 'made/steps.json', '--lists', 'summary,new,changes,transitions,bench', ...read, ...splice,
                '--units', choices.count, ...(choices.scene ? ['--scene-take'] : []), '--prove',
                ...(edit ? ['--channel', choices.channel] : []), ...pages(choices, 'changes', '--lists-json'),
                ...(choices.count === 'feet' ? ['--feet'] : [])]],
    stem: 'changes', report: 'made/changes.txt',
  };
}

/// `chosen`: {edits, olds, news, logs}, each as above.
export function planOf(choices, chosen) {
  if (choices.make === 'changes') return changesPlan(choices, chosen.olds, chosen.news, chosen.logs);
  if (choices.make === 'order') return orderPlan(choices, chosen.edits, chosen.logs);
  return listsPlan(choices, chosen.edits, chosen.logs);
}

/// What other programs take, of the edit that was listed.
export function exportsOf(choices, edits, logs) {
  const edit = edits[0];
  if (!edit || edit.use !== 'edit') return [];
  const log = logCommands(logs, edit.rate);
  return ['otio', 'edl', 'ale'].map(kind => {
    const name = `made/${listStem(edit.name)}-export.${kind}`;
    const channel = kind === 'edl' && choices.channel.startsWith('V') ? ['--channel', choices.channel] : [];
    const used = kind === 'otio' ? {table: '', commands: []} : log; // an .otio holds the edit; the log is given with it
    return {name, commands: [...used.commands,
                             ['export', ...edits.map(one => path(one.name)), '-o', name, ...reading(choices, edit, used.table), ...channel]]};
  });
}

export const describePlan = (names, rate, sequence) =>
  ['describe', ...names.map(path), '--json', 'made/files.json', ...option('--rate', rate), ...option('--sequence', sequence)];

/// As it would be typed.
export const typed = words =>
  'quillbrook ' + words.map(word => /^[\w./,:=+@%-]+$/.test(word) ? word : `'${word.replaceAll("'", `'\\''`)}'`).join(' ');
