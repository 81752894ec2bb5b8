// A page of lists, as the command writes it, in pieces that a browser can lay out one by one. Names in it are text: the
// command writes them so that no tag can stand in them.

const between = (text, from, to, at = 0) => {
  const start = text.indexOf(from, at);
  const end = start < 0 ? -1 : text.indexOf(to, start + from.length);
  return end < 0 ? null : {start, end, inner: text.slice(start + from.length, end)};
};

/// Rules of the page for a list of its own below a shadow root.
export function styleOf(page) {
  const css = between(page, '<style>', '</style>')?.inner ?? '';
  return css.replaceAll(':root', ':host').replace(/(^|\n)html \{/g, '$1:host {').replaceAll('@media (prefers-reduced-motion: no-preference) { html {', '@media (prefers-reduced-motion: no-preference) { :host {');
}

export const markOf = page => /<html[^>]* data-document=([0-9a-f]+)/.exec(page.slice(0, 400))?.[1] ?? '';

/// {id: html} of all lists, in order.
export function sectionsOf(page) {
  const sections = [];
  for (let at = 0;;) {
    const found = between(page, '<section id="', '</section>', at);
    if (!found) return sections;
    sections.push({id: found.inner.slice(0, found.inner.indexOf('"')), html: page.slice(found.start, found.end + '</section>'.length)});
    at = found.end;
  }
}

/// As tall as what comes there.
const placeOf = (number, piece) => `<tbody data-piece="${number}" style="display:block;height:${/--tall:([\d.]+rem)/.exec(piece.slice(0, 200))?.[1] ?? '10rem'}"></tbody>`;

/// Cuts out what repeats, and leaves an empty element with its number in each place.
function cut(html, from, to, stand, pieces) {
  let left = '', at = 0;
  for (;;) {
    const start = html.indexOf(from, at), end = start < 0 ? -1 : html.indexOf(to, start);
    if (end < 0) return left + html.slice(at);
    const piece = html.slice(start, end + to.length);
    left += html.slice(at, start) + stand(pieces.length, piece);
    pieces.push(piece);
    at = end + to.length;
  }
}

/// {drawings, shell, pieces}: what stands above the tables, the list without its rows, and what belongs into the places
/// that it has for them.
export function sheetOf(section) {
  const pieces = [];
  let drawings = '';
  let shell = section.html;
  const head = shell.search(/<table\b/);
  const figures = [];
  const above = cut(head < 0 ? shell : shell.slice(0, head), '<figure', '</figure>', () => '', figures);
  drawings = figures.join('');
  shell = above + (head < 0 ? '' : shell.slice(head));
  shell = cut(shell, '<tbody', '</tbody>', placeOf, pieces);
  return {drawings, shell, pieces};
}

const many_lines = 40;
const attribute = (tag, name) => new RegExp(` ${name}="([^"]*)"`).exec(tag)?.[1] ?? '';

/// Lines of a long drawing as drawings of their own: a browser lays out and draws those that are in sight.
function linesOf(html) {
  const open = between(html, '<svg', '>'), tag = html.slice(open.start, open.end + 1);
  const [, , width, height] = attribute(tag, 'viewBox').split(' ').map(Number), scale = Number(attribute(tag, 'width')) / width;
  const groups = [];
  const rest = cut(html.slice(open.end + 1, html.lastIndexOf('</svg>')), '\n<g ', '\n</g>', () => '', groups);
  const tops = groups.map(group => Number(/translate\(0 (\d+)\)/.exec(group)?.[1]));
  if (tops.some((top, i) => !(top > (tops[i - 1] ?? -1)))) return null;
  const font = attribute(tag, 'font-family'), defs = between(rest, '<defs>', '</defs>');
  const behind = rest.slice(defs ? defs.end + '</defs>'.length : 0);
  const tall = i => (i + 1 === groups.length ? height : tops[i + 1]) - tops[i], size = i => `width:${width * scale}px;height:${tall(i) * scale}px`;
  const pieces = groups.map((group, i) => `<svg aria-hidden="true" style="${size(i)}" viewBox="0 ${tops[i]} ${width} ${tall(i)}" font-family="${font}" fill="none">${group}${i + 1 === groups.length ? behind : ''}</svg>`);
  const places = pieces.map((piece, i) => `<div data-piece="${i}" style="${size(i)}"></div>`).join('');
  const hidden = defs ? `<svg aria-hidden="true" style="position:absolute;width:0;height:0"><defs>${defs.inner}</defs></svg>` : '';
  return {shell: `<figure role="img" aria-label="${attribute(tag, 'aria-label')}">${hidden}${places}</figure>`, pieces};
}

/// {shell, pieces} of drawings, as of a list. A long one comes line by line.
export function drawingOf(html) {
  const groups = html.split('\n<g ').length - 1, drawings = html.split('<svg').length - 1;
  const lines = groups > many_lines && drawings === 1 ? linesOf(html) : null;
  return lines ?? {shell: html, pieces: []};
}
