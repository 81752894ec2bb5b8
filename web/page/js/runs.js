// Runs the command in an instance of its own, which goes with its memory when the run is over. A run that breaks breaks
// nothing else.

const folder = '/work';

const folderOf = path => path.slice(0, path.lastIndexOf('/'));

/// Files that are brought as Blobs are read where they lie, as far as the command asks for them: scans are too large to be
/// taken along whole. They lie in folders of their own.
function mountAll(system, files) {
  const folders = new Map();
  for (const [name, {blob}] of files) {
    if (!blob) continue;
    const top = name.slice(0, name.indexOf('/'));
    if (!folders.has(top)) folders.set(top, []);
    folders.get(top).push({name: name.slice(top.length + 1), data: blob});
  }
  for (const [top, blobs] of folders) {
    system.mkdir(`${folder}/${top}`);
    system.mount(system.filesystems.WORKERFS, {blobs}, `${folder}/${top}`);
  }
}

function fill(system, files) {
  for (const path of ['', '/made', '/made/csv']) system.mkdir(folder + path);
  for (const [name, {bytes, modified}] of files) {
    if (!bytes) continue;
    const path = `${folder}/${name}`;
    system.mkdirTree(folderOf(path));
    system.writeFile(path, bytes, {canOwn: false});
    system.utime(path, modified, modified);
  }
  mountAll(system, files);
  system.chdir(folder);
}

/// All files below "made/" as [name, bytes].
function collect(system, at = 'made') {
  const found = [];
  system.ignorePermissions = true;
  for (const name of system.readdir(`${folder}/${at}`).sort()) {
    if (name === '.' || name === '..') continue;
    const path = `${at}/${name}`;
    if (system.isDir(system.stat(`${folder}/${path}`).mode)) found.push(...collect(system, path));
    else found.push([path, system.readFile(`${folder}/${path}`)]);
  }
  return found;
}

/// The command's own words in place of the engine's.
function fault(error) {
  if (/memory|allocat/i.test(String(error))) return 'quillbrook: out of memory';
  return 'quillbrook: the run broke off: ' + String(error).split('\n')[0];
}

/// `makeModule` and `compiled` are the build's; `files` a Map of names and {bytes or blob, modified}, the milliseconds of when
/// each was last changed, which edits without a date are dated by; `made` the seconds that documents bear as their time. Gives {status, out, err, files: Map of what lies below "made/"}.
export async function runCommand(makeModule, compiled, words, files, made) {
  const out = [], err = [];
  const module = await makeModule({
    instantiateWasm(imports, done) {
      WebAssembly.instantiate(compiled, imports).then(instance => done(instance));
      return {};
    },
    print: line => out.push(line),
    printErr: line => err.push(line),
    preRun: [started => { started.ENV.SOURCE_DATE_EPOCH = String(made); }],
  });
  fill(module.FS, files);
  let status = 1;
  try {
    status = module.callMain(words);
  } catch (error) {
    err.push(fault(error));
  }
  return {status, out, err, files: new Map(collect(module.FS))};
}
