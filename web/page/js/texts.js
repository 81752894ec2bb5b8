// All words of the page. Another language is another file with the same names.

const many = (count, one, more = one + 's') => `${count.toLocaleString('en')} ${count === 1 ? one : more}`;
const size = bytes => bytes < 1000 ? `${bytes} bytes` : bytes < 1e6 ? `${Math.round(bytes / 1000)} kB` : `${(bytes / 1e6).toFixed(1)} MB`;

export const texts = {
  name: 'Quillbrook',
  about: 'Film lists from edits. Nothing you open leaves this computer.',
  tryExample: 'Try the example', help: 'Help', close: 'Close',
  many, size,

  files: {
    title: 'Files', drop: 'Drop edits and logs here', or: 'or choose them',
    kinds: '.otio · .edl · .xml · .fcpxml · .aaf · .ale · .flx · .cdb · .RDB',
    reading: 'Reading', remove: name => `Take out ${name}`, list: name => `List ${name}`,
    events: count => many(count, 'event'), rows: count => many(count, 'row'), rolls: count => many(count, 'roll'),
    keys: (known, all) => known === all ? 'all with key numbers' : known === 0 ? 'no key numbers' : `${known} with key numbers`,
    tracks: 'Tracks', side: 'Which cut', old: 'Old', new: 'New', warnings: count => `${many(count, 'thing')} told while reading`,
    more: count => `and ${count} more`,
    needsRate: 'An edit list doesn’t tell its frames a second. Which rate?', rate: 'Frames a second', take: 'Use it',
    needsSequence: 'It holds several sequences. Which one?', sequence: 'Sequence',
    unknown: 'No edit, log or table', added: name => `${name} was read`, taken: name => `${name} was taken out`,
  },

  choices: {
    make: {title: 'Make', values: {copy: 'Cutting copy', negative: 'Negative cut', order: 'Order', changes: 'Changes'},
           help: {copy: 'What to cut of the print, roll by roll, with the opticals to order.',
                  negative: 'What to cut of the negative: each optical is one piece from the lab.',
                  order: 'What to pull, print or scan for all of the edits together.',
                  changes: 'What to do to a cut that was made, after a recut.'}},
    whom: {title: 'For', values: {'': 'Everyone', assistant: 'Assistant', cutter: 'Cutter', lab: 'Lab', optical: 'Optical', scan: 'Scan', all: 'All lists'},
           help: {'': 'The usual lists with the usual columns.', assistant: 'Lists by scene, with all that is missing or in doubt.', cutter: 'Few columns for the bench, with boxes to tick.',
                  lab: 'What the laboratory pulls and prints, by key number.', optical: 'Count sheets for the printer, and what they need.', scan: 'What to scan, with tapes and timecodes.', all: 'Every list with every column.'}},
    channel: {title: 'Track', help: 'Which track of the edit is listed.'},
    count: {title: 'Count in', values: {feet: 'Feet + frames', frames: 'Frames', timecode: 'Timecode'}, help: ''},
    more: 'More options', changed: count => count === 0 ? 'as usual' : `${count} changed`,
    run: {copy: 'Make the lists', negative: 'Make the lists', order: 'Make the order', changes: 'Make the changelist'},
    stop: 'Stop',
  },
  options: {
    handles: {title: 'Handles, frames', help: 'Frames to pull at each end beyond what is cut.'},
    splice: {title: 'Splice loss, frames', help: 'Frames that must lie between two pieces of one take on the negative.'},
    sort: {title: 'Sort pulls', values: {roll: 'By roll', key: 'By key number', scene: 'By scene and take', edit: 'As in the edit'}, help: 'In which order film is pulled.'},
    join: {title: 'Join pieces, frames', help: 'Pieces with fewer frames between them become one.'},
    whole: {title: 'Whole takes', help: 'Order takes whole, where a log tells how far they go.'},
    paper: {title: 'Paper', values: {'': 'As the profile has it', a4: 'A4', letter: 'Letter'}, help: 'What pages are printed on.'},
    single: {title: 'Single-layer lists', help: 'Write .sl1 to .sl4 as well.'},
    together: {title: 'Edit lists are one programme', help: 'All edit lists (.edl) make one edit, for pictures and titles in files of their own.'},
    effects: {title: 'All effects are the lab’s', help: 'Every effect of the file is for the lab to make.'},
    reverse: {title: 'Reverse shots of edit lists', values: {'': 'Source in is the lowest frame', first: 'Source in is the first shown'}, help: 'What an edit list means by source in of a shot that runs backward.'},
    match: {title: 'Find log rows by', values: {'': 'Reel and timecode', reel: 'Reel', tape: 'Tape', clip: 'Clip', file: 'File', 'camera-roll': 'Camera roll'}, help: 'How shots of the edit find their rows in the log.'},
    time: {title: 'Log timecode', values: {'': 'Source', camera: 'Camera', sound: 'Sound'}, help: 'By which timecode of the log’s rows.'},
    scene: {title: 'Scene and take', help: 'In place of the shot’s name.'},
  },
  keep: {
    title: 'Keep files, choices and ticks in this browser', wipe: 'Wipe what is kept', wiped: 'Wiped. Nothing is kept any more.',
    says: (files, ticks) => `Wiping forgets ${many(files, 'file')}, the choices and ${many(ticks, 'tick')} in this browser. Your own files stay.`,
    failed: 'This browser keeps nothing (private window?).',
  },

  states: {
    nothing: 'Nothing yet', nothingHelp: 'Drop an edit, and the lab’s log with it if the edit has no key numbers. Or try an example:',
    ready: 'Ready', readyHelp: 'Choose what to make and for whom.',
    reading: 'Reading the files', needsRate: name => `${name} needs a rate`, needsRateHelp: 'Say beside the file how many frames a second it counts.',
    needsSequence: name => `${name} holds several sequences`, needsSequenceHelp: 'Choose one beside the file.',
    needsEdit: 'No edit yet', needsEditHelp: 'A log says where film is; an edit says which of it is used. Drop an edit too.',
    needsCuts: 'A changelist needs two cuts', needsCutsHelp: 'Drop the old cut and the new one, as edits or tables, and say beside each which it is.',
    cantRead: 'No file that can be listed', cantReadHelp: 'What is wrong stands beside each file.',
    making: 'Making the lists', failed: 'The lists could not be made', failedHelp: 'What the command said:', stopped: 'Stopped. Nothing was made.',
    stages: {log: 'Reading the logs', cutlist: 'Listing the edit', print: 'Listing the table', order: 'Ordering film', changelist: 'Comparing the cuts', check: 'Looking for doubts', pages: 'Laying out the pages'},
    made: lists => `${many(lists, 'list')} made`, changed: 'The choices have changed since. Make the lists again to see them.',
    starting: 'Starting', broken: why => `The page could not start its worker: ${why}`,
  },
  examples: {
    reel: {title: 'A reel', about: 'Two minutes of 35mm in four tracks, with dissolves, wipes, speeds and titles.', files: ['examples/reel.otio'], choices: {make: 'copy'}},
    log: {title: 'An edit list and its logs', about: 'An EDL of tapes; the laboratory’s logs tell the key numbers.', files: ['examples/ferryman.edl', 'examples/days.ale', 'examples/night.flx'], choices: {make: 'negative', whom: 'cutter'}, rate: '25'},
    recut: {title: 'A recut', about: 'Two reels, before and after: what to do to the cutting copy.', files: ['examples/weir-old-r1.otio', 'examples/weir-old-r2.otio', 'examples/weir-new-r1.otio', 'examples/weir-new-r2.otio'], choices: {make: 'changes', whom: 'cutter'}},
  },

  result: {
    label: 'What was made', print: 'Print', download: 'Download', all: 'All as a zip', strip: 'The reel', lists: 'Lists', report: 'Report',
    proved: 'proved frame by frame', notProved: 'not proved, see below', benchProved: 'the bench list is proved frame by frame, another list is not: see below', steps: 'What was proved', filter: 'Filter rows', shown: (some, all) => `${some} of ${all} rows`,
    findings: (wrong, doubts) => [wrong && `${wrong} wrong`, doubts && many(doubts, 'doubt')].filter(text => text).join(', ') || 'Nothing wrong or in doubt',
    notes: count => `${many(count, 'note')}`, show: 'Show', event: number => `Event ${number}`, looking: 'Looking for what is wrong', further: count => `${many(count, 'further finding')} in the list of doubts`,
    told: 'Said on the way', commands: 'The same by the command', commandsHelp: 'In a folder with these files, these lines make the same bytes.',
    severity: {wrong: 'Wrong', doubt: 'In doubt', note: 'To know'},
    kinds: {txt: 'report', lists: 'plain text', cdb: 'table of the cut', html: 'page', json: 'for scripts', csv: 'spreadsheet', RDB: 'logging table', sl1: 'single layer', sl2: 'single layer', sl3: 'single layer', sl4: 'single layer',
            otio: 'for other programs', edl: 'for other programs', ale: 'for other programs'},
    exported: name => `${name} could not be written`, laying: 'Laying out rows', length: 'Length',
    rolls: 'Add the lab’s log: some film of this edit has no key numbers.',
  },
  guide: {
    title: 'How this works',
    parts: [
      ['Files', 'Drop the edit as your editing program exports it: FCP 7 XML, FCPXML, AAF, OpenTimelineIO or CMX 3600 edit lists. Drop the laboratory’s or telecine’s logs (ALE, FLEx, Keylog, spreadsheets as CSV) with it where the edit has no key numbers. Cutlist tables (.cdb) and logging tables (.RDB) are taken as well.'],
      ['Nothing leaves this computer', 'All work is done by this page, in this browser. It asks nothing of any other place, and works without a network once it was opened.'],
      ['Lists', 'A click on a row shows its film in the drawing, a click on the drawing the row. Ticks mark what is done. What must not be overlooked stands in the row that it is about.'],
      ['Printing', 'Print makes pages with heads and numbers; to get a PDF, print to a file.'],
      ['The command', 'The lists are those of the command quillbrook, byte for byte. Under “The same by the command” stands how to make them there.'],
    ],
  },
};
