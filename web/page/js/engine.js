// The worker from the page's side: a promise a task. `stop` ends what runs, and the next task begins afresh.

let worker = null, next = 0;
const waiting = new Map();

function failAll(fault) {
  for (const {reject} of waiting.values()) reject(new Error(fault));
  waiting.clear();
}

function start() {
  worker = new Worker(new URL('./worker.js', import.meta.url), {type: 'module'});
  worker.onmessage = ({data: {id, stage, part, result, fault}}) => {
    const task = waiting.get(id);
    if (!task) return;
    if (stage !== undefined) return task.stage?.(stage);
    if (part !== undefined) return task.part?.(part);
    waiting.delete(id);
    if (fault !== undefined) task.reject(new Error(fault));
    else task.resolve(result);
  };
  worker.onerror = event => {
    event.preventDefault();
    stop(event.message || 'the worker could not be loaded');
  };
}

/// `on`: {stage, part}, called on the way.
export function ask(task, about = {}, on = {}) {
  if (!worker) start();
  const id = ++next;
  return new Promise((resolve, reject) => {
    waiting.set(id, {resolve, reject, ...on});
    worker.postMessage({id, task, ...about});
  });
}

export function stop(fault = 'stopped') {
  worker?.terminate();
  worker = null;
  failAll(fault);
}
