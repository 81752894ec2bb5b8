// From what was chosen to command lines. A plan is what the command would be told in a folder with these files:
// {commands: [[words]], lists: names of what holds the lists}. Folders that it writes into lie below "made/".

/// What stands where nothing was chosen. Of the folded options only those that differ go on a line.
export const usual = {
  make: 'copy', whom: '', channel: 'V1', count: 'feet',
  handles: 0, splice: 1, sort: 'roll', paper: '', single: false, effects: false, reverse: '', match: '', time: '',
  together: false, join: 1, whole: false, ends: false, scene: false, method: 'ab', loss: '', letters: '',
};
const of_lists = ['handles', 'splice', 'sort', 'single', 'together', 'match', 'time', 'letters', 'effects', 'reverse', 'paper'];
export const folded = {
  copy: of_lists,
  negative: of_lists,
  order: ['handles', 'join', 'sort', 'whole', 'ends', 'letters', 'effects', 'reverse', 'paper'],
  changes: ['splice', 'scene', 'match', 'time', 'letters', 'effects', 'reverse', 'paper'],
  conform: ['method', 'loss', 'letters', 'effects', 'reverse', 'paper'],
};

export const changed = choices => folded[choices.make].filter(name => choices[name] !== usual[name]);

/// For whom, where a profile of the user's own was brought.
export const own = 'own';

const logTable = 'made/log.RDB';
export const listStem = name => name.replace(/^.*\//, '').replace(/\.[^.]*$/, '') || 'list';
/// A name that begins with a dash isn't taken for an option.
const path = name => name.startsWith('-') ? './' + name : name;
const option = (name, value) => value === '' || value === undefined || value === null ? [] : [name, String(value)];

const paths = files => files.map(one => path(one.name));
const wordsOf = text => text.split(/[\s,]+/).filter(word => word);

/// One logging table of all logs: of texts and of scanned pictures, each `table` being one already.
function logCommands(logs, rate, choices) {
  const tables = logs.filter(log => log.table), scans = logs.filter(log => log.scan), texts = logs.filter(log => !log.table && !log.scan);
  if (logs.length === 0) return {table: '', commands: []};
  if (logs.length === 1 && tables.length) return {table: path(logs[0].name), commands: []};
  const read = [], names = tables.map(log => path(log.name));
  const take = (some, command, made, more) => {
    if (some.length === 0) return;
    const table = some.length === logs.length ? logTable : made;
    read.push(['log', command, ...some.map(log => path(log.name)), '-o', table, ...option('--rate', rate), ...more]);
    names.push(table);
  };
  const letters = wordsOf(choices.letters);
  take(texts, 'import', 'made/imported.RDB', []);
  take(scans, 'scan', 'made/scanned.RDB', letters.length ? ['--letters', ...letters] : []);
  const merge = names.length > 1 ? [['log', 'merge', ...names, '-o', logTable]] : [];
  return {table: logTable, commands: [...read, ...merge]};
}

/// `matches`: the command finds rows of the log in other ways too.
function reading(choices, edit, log, matches = true) {
  return [...option('--rate', edit.rate), ...option('--sequence', edit.sequence), ...option('--log', log),
          ...(log && matches ? [...option('--match', choices.match), ...option('--log-time', choices.time)] : []),
          ...(choices.effects ? ['--all-effects'] : []), ...option('--edl-reverse', choices.reverse)];
}

const whose = choices => choices.whom === own ? option('--profile', choices.profile && path(choices.profile)) : option('--for', choices.whom);

function pages(choices, stem, json) {
  return ['--html', `made/${stem}.html`, json, `made/${stem}.json`, '--csv', 'made/csv', '--text', `made/${stem}-lists.txt`,
          ...whose(choices), ...option('--paper', choices.paper)];
}

const counted = choices => choices.count === 'frames' ? ['--frames'] : ['--feet'];

/// `edits`: [{name, use, rate, sequence}], the first one's choices of rate and sequence hold for all.
function listsPlan(choices, edits, logs) {
  const edit = edits[0], stem = listStem(edit.name);
  const report = `made/${stem}.txt`;
  const more = [...pages(choices, stem, '--json'), ...counted(choices), ...(choices.handles ? ['--handles', String(choices.handles)] : []),
                ...(choices.sort === 'key' ? ['--sort-by-key'] : []), '--prove'];
  if (edit.use === 'cut') return {commands: [['print', path(edit.name), '-o', report, ...more]], stem, report};
  const log = logCommands(logs, edit.rate, choices);
  const names = paths(edits), read = [...reading(choices, edit, log.table), '--channel', choices.channel];
  const negative = choices.make === 'negative' ? ['--neg-cut'] : [];
  const splice = choices.splice === usual.splice ? [] : ['--splice-frames', String(choices.splice)];
  const single = choices.single ? ['--single-layer', '1,2,3,4'] : [];
  return {
    commands: [...log.commands, ['cutlist', ...names, '-o', report, ...read, ...negative, ...splice, ...single, '--no-progress', ...more]],
    findings: ['check', ...names, ...read, ...negative, ...splice, '--json', 'made/findings.json'],
    stem, report,
  };
}

/// What is common to all files of a run that reads edits: the first that tells it.
const common = files => ({use: files.some(one => one.use === 'edit') ? 'edit' : 'cut', rate: files.find(one => one.rate)?.rate ?? '',
                          sequence: files.find(one => one.sequence)?.sequence ?? ''});

function logOf(choices, edit, logs) {
  return edit.use === 'edit' ? logCommands(logs, edit.rate, choices) : {table: '', commands: []};
}

function orderPlan(choices, {edits, logs, had}) {
  const edit = common(edits), log = logOf(choices, edit, logs);
  const sort = {roll: '', key: '', scene: 'scene', edit: 'edit'}[choices.sort];
  return {
    commands: [...log.commands,
               ['order', ...paths(edits), '-o', 'made/order.txt', '--json', 'made/order-steps.json',
                ...reading(choices, edit, log.table, false), '--channel', choices.channel, '--handles', String(choices.handles),
                '--join', String(choices.join), ...option('--sort', sort), ...(choices.whole ? ['--whole-takes'] : []),
                ...(had.length ? ['--had', ...paths(had), ...(choices.ends ? ['--ends'] : [])] : []), '--prove',
                ...pages(choices, 'order', '--lists-json'), ...(choices.count === 'frames' ? [] : ['--feet'])]],
    stem: 'order', report: 'made/order.txt',
  };
}

function changesPlan(choices, {olds, news, logs}) {
  const edit = common([...olds, ...news]), log = logOf(choices, edit, logs), edits = edit.use === 'edit';
  const sequences = ['--old-sequence', '--new-sequence'].flatMap((name, i) => option(name, common([olds, news][i]).sequence));
  const read = edits ? [...reading(choices, {rate: edit.rate}, log.table), ...sequences] : [];
  const splice = choices.splice === usual.splice || !edits ? [] : ['--splice-frames', String(choices.splice)];
  return {
    commands: [...log.commands,
               ['changelist', '--old', ...paths(olds), '--new', ...paths(news),
                '-o', 'made/changes.txt', '--json', 'made/steps.json', '--lists', 'summary,new,changes,transitions,bench', ...read, ...splice,
                '--units', choices.count, ...(choices.scene ? ['--scene-take'] : []), '--prove',
                ...(edits ? ['--channel', choices.channel] : []), ...pages(choices, 'changes', '--lists-json'),
                ...(choices.count === 'feet' ? ['--feet'] : [])]],
    stem: 'changes', report: 'made/changes.txt',
  };
}

/// `carried`: the cuts that were carried out on the negative, one behind the other. What is in the way stands beside the rows.
function conformPlan(choices, {held, carried, logs}) {
  const edit = common([...held, ...carried.flat()]), log = logOf(choices, edit, logs);
  const read = edit.use === 'edit' ? reading(choices, edit, log.table, false) : [];
  const method = choices.method === usual.method ? [] : ['--method', choices.method];
  return {
    commands: [...log.commands,
               ['conform', ...paths(held), ...carried.flatMap(one => ['--cut', ...paths(one)]), '-o', 'made/conform.txt',
                '--json', 'made/spent.json', ...method, ...option('--splice-loss', choices.loss.trim()), ...read,
                ...pages(choices, 'conform', '--lists-json'), ...(choices.count === 'frames' ? [] : ['--feet'])]],
    stem: 'conform', report: 'made/conform.txt', noted: true,
  };
}

/// `chosen`: {edits, olds, news, held: [{name, use, rate, sequence}], carried: lists of such, logs: [{name, table, scan}],
/// had: [{name}], profile: its name}, those of them that what is made asks for.
export function planOf(choices, chosen) {
  const all = {...choices, profile: chosen.profile ?? ''};
  const of = {edits: [], olds: [], news: [], held: [], carried: [], logs: [], had: [], ...chosen};
  if (choices.make === 'changes') return changesPlan(all, of);
  if (choices.make === 'order') return orderPlan(all, of);
  if (choices.make === 'conform') return conformPlan(all, of);
  return listsPlan(all, of.edits, of.logs);
}

/// What other programs take, of the edit that was listed.
export function exportsOf(choices, edits, logs) {
  const edit = edits[0];
  if (!edit || edit.use !== 'edit') return [];
  const log = logCommands(logs, edit.rate, choices);
  return ['otio', 'edl', 'ale'].map(kind => {
    const name = `made/${listStem(edit.name)}-export.${kind}`;
    const channel = kind === 'edl' && choices.channel.startsWith('V') ? ['--channel', choices.channel] : [];
    const used = kind === 'otio' ? {table: '', commands: []} : log; // an .otio holds the edit; the log is given with it
    return {name, commands: [...used.commands,
                             ['export', ...paths(edits), '-o', name, ...reading(choices, edit, used.table), ...channel]]};
  });
}

const told = 'made/files.json';

/// What a file is; of scanned pictures first the table that they make.
export function describePlan({name, scan, rate, sequence}) {
  if (scan) return {commands: [['log', 'scan', path(name), '-o', logTable, ...option('--rate', rate)], ['describe', logTable, '--json', told]], told};
  return {commands: [['describe', path(name), '--json', told, ...option('--rate', rate), ...option('--sequence', sequence)]], told};
}

/// As it would be typed.
export const typed = words =>
  'quillbrook ' + words.map(word => /^[\w./,:=+@%-]+$/.test(word) ? word : `'${word.replaceAll("'", `'\\''`)}'`).join(' ');
