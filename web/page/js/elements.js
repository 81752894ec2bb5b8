// Elements made in one line. Words become text nodes, never markup.

/// make('button', {class: 'main', onclick: go, disabled: true}, 'Go')
export function make(tag, properties = {}, ...children) {
  const element = document.createElement(tag);
  for (const [name, value] of Object.entries(properties)) {
    if (value === undefined || value === null || value === false) continue;
    if (name.startsWith('on')) element.addEventListener(name.slice(2), value);
    else if (name === 'value' || name === 'checked') element[name] = value;
    else element.setAttribute(name, value === true ? '' : value);
  }
  element.append(...children.flat(Infinity).filter(child => child !== undefined && child !== null && child !== false && child !== ''));
  return element;
}

/// Puts other children into an element, and the focus back where it was by the id of what had it.
export function refill(element, ...children) {
  const focused = element.contains(document.activeElement) ? document.activeElement.id : '';
  element.replaceChildren(...children.flat(Infinity).filter(child => child));
  if (focused) document.getElementById(focused)?.focus();
  return element;
}

/// Lets the browser answer: the next step runs in a task of its own.
export const breathe = () => new Promise(resolve => {
  const channel = new MessageChannel();
  channel.port1.onmessage = () => { channel.port1.close(); resolve(); };
  channel.port2.postMessage(null);
});

/// Takes steps until there are none, never more than `budget` milliseconds of them in one task. False where `wanted`
/// came to say no on the way.
export async function inSlices(items, step, wanted = () => true, budget = 10) {
  let until = performance.now() + budget;
  for (const item of items) {
    step(item);
    if (performance.now() < until) continue;
    await breathe();
    if (!wanted()) return false;
    until = performance.now() + budget;
  }
  return true;
}

export function download(name, blob) {
  const link = make('a', {href: URL.createObjectURL(blob), download: name});
  document.body.append(link);
  link.click();
  link.remove();
  setTimeout(() => URL.revokeObjectURL(link.href), 60_000);
}
