// A page of lists, as the command writes it, in pieces that a browser can lay out one by one. Names in it are text: the
// command writes them so that no tag can stand in them.

const between = (text, from, to, at = 0) => {
  const start = text.indexOf(from, at);
  const end = start < 0 ? -1 : text.indexOf(to, start + from.length);
  return end < 0 ? null : {start, end, inner: text.slice(start + from.length, end)};
};

/// Rules of the page for a list of its own below a shadow root, where those of paper mean nothing.
export function styleOf(page) {
  const all = between(page, '<style>', '</style>')?.inner ?? '', paper = between(all, '@page {', '@media screen and (max-width: 46rem) {\n#');
  const css = paper ? all.slice(0, paper.start) + all.slice(paper.end) : all;
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

/// As tall as what comes there will be, by what the page says of it.
function heightOf(piece) {
  const sums = {rem: 0, px: 0}, each = / class=(?:strip|scroll) style="[^"]*--tall:([\d.]+)(rem|px)/g;
  const all = [...piece.matchAll(each)];
  for (const [, number, unit] of all) sums[unit] += Number(number);
  if (all.length) return `calc(${sums.rem}rem + ${sums.px}px)`;
  return /--tall:([\d.]+rem)/.exec(piece.slice(0, 200))?.[1] ?? '10rem';
}

const placeOf = tag => (number, piece) => `<${tag} data-piece="${number}" style="display:block;height:${heightOf(piece)}"></${tag}>`;

/// Cuts out what repeats, and leaves an empty element with its number in each place.
function cut(html, from, to, stand, pieces) {
  const left = [];
  for (let at = 0;;) {
    const start = html.indexOf(from, at), end = start < 0 ? -1 : html.indexOf(to, start);
    if (end < 0) return left.join('') + html.slice(at);
    const piece = html.slice(start, end + to.length);
    left.push(html.slice(at, start), stand(pieces.length, piece));
    pieces.push(piece);
    at = end + to.length;
  }
}

const nothing = () => '';

/// {drawings, shell, pieces}: what stands above the tables, the list without its rows, and what belongs into the places
/// that it has for them: sheets, or rows that lie together.
export function sheetOf(section) {
  const pieces = [], figures = [];
  const head = section.html.search(/<div class="sheet|<div class=scroll|<table\b/), top = head < 0 ? section.html.length : head;
  const above = cut(section.html.slice(0, top), '<figure', '</figure>', nothing, figures);
  const sheets = cut(section.html.slice(top), '<div class="sheet', '</table></div>\n</div>', placeOf('div'), pieces);
  return {drawings: figures.join(''), shell: above + cut(sheets, '<tbody', '</tbody>', placeOf('tbody'), pieces), pieces};
}

/// {shell, pieces} of drawings, as of a list: each line of a drawing is a piece. Patterns that lines are filled with stand
/// in the shell, as any of them may come first.
export function drawingOf(html) {
  const patterns = [], pieces = [];
  const lines = cut(html, '<defs>', '</defs>', nothing, patterns);
  const shell = cut(lines, '<div class=strip', '</svg></div>', placeOf('div'), pieces);
  return {shell: (patterns.length ? `<svg aria-hidden="true" class="patterns">${patterns.join('')}</svg>` : '') + shell, pieces};
}
