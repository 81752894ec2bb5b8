#include "documents/html_assets.h"

namespace documents {

// A width is counted in characters of the text; "--cols" of a table is the grid of its rows.
const char* const html_style = R"css(
:root {
  --ink: #111; --soft: #595959; --rule: #d4d4d4; --paper: #fff; --back: #f4f4f2; --wrong: #a00020; --here: #fff3c4;
  --hatch: repeating-linear-gradient(135deg, #0000 0 5px, #8883 5px 9px);
  color-scheme: light dark;
}
@media (prefers-color-scheme: dark) {
  :root { --ink: #eee; --soft: #a9a9a9; --rule: #444; --paper: #161616; --back: #0e0e0e; --wrong: #ff8090; --here: #4a3f10; }
}
* { box-sizing: border-box; }
html { background: var(--back); color: var(--ink); font: 16px/1.45 "DejaVu Sans", system-ui, sans-serif; }
body { margin: 0; }
.m { font-family: "DejaVu Sans Mono", ui-monospace, monospace; font-size: .9em; font-variant-numeric: tabular-nums; }
.l { color: var(--soft); }
.m, .p, b, td, th, h1, h2, h3, dd { unicode-bidi: isolate; }
b, h1, h2, h3, th { font-weight: 650; }
a { color: inherit; }
:focus-visible { outline: 3px solid var(--ink); outline-offset: 2px; }
.skip { position: absolute; left: -999rem; }
.skip:focus { left: .5rem; top: .5rem; background: var(--paper); padding: .75rem; z-index: 3; }
.top { background: var(--paper); border-bottom: 1px solid var(--rule); padding: 1rem max(1rem, calc(50vw - 38rem)); }
.top h1 { font-size: 1.5rem; margin: 0; overflow-wrap: anywhere; }
.top p { margin: .2rem 0 0; color: var(--soft); overflow-wrap: anywhere; }
nav ul { display: flex; flex-wrap: wrap; gap: .25rem 1.25rem; list-style: none; margin: .75rem 0 0; padding: 0; }
nav a { display: inline-block; padding: .6rem 0; }
.tools { position: sticky; top: 0; z-index: 2; background: var(--paper); border-bottom: 1px solid var(--rule);
  padding: .5rem max(1rem, calc(50vw - 38rem)); display: flex; flex-wrap: wrap; gap: .5rem 1rem; align-items: center; }
.tools[hidden] { display: none; }
.tools input[type=search] { font: inherit; color: inherit; background: var(--paper); border: 1px solid var(--soft);
  border-radius: .3rem; min-height: 2.75rem; padding: 0 .6rem; width: min(20rem, 100%); }
.tools label { display: flex; flex-wrap: wrap; align-items: center; gap: .6rem; }
.tools output { color: var(--soft); }
main { padding: 0 max(1rem, calc(50vw - 38rem)) 3rem; }
section { background: var(--paper); border: 1px solid var(--rule); border-radius: .6rem; margin-top: 1.25rem; padding: 1.25rem; }
.head { display: flex; flex-wrap: wrap; justify-content: space-between; gap: .25rem 2rem; border-bottom: 2px solid var(--ink);
  padding-bottom: .6rem; }
.head h2 { font-size: 1.5rem; margin: 0; overflow-wrap: anywhere; }
.head p { margin: .15rem 0 0; color: var(--soft); overflow-wrap: anywhere; min-width: 0; }
.head .aside { text-align: right; margin-left: auto; }
.facts { display: grid; grid-template-columns: repeat(auto-fit, minmax(9rem, 1fr)); gap: .5rem 1.5rem; margin: .75rem 0; }
.facts dt { color: var(--soft); font-size: .85rem; }
.facts dd { margin: 0; }
.counting { color: var(--soft); font-size: .85rem; margin: .75rem 0 0; }
.columns { margin: .5rem 0; font-size: .85rem; }
.columns summary { cursor: pointer; padding: .6rem 0; }
.columns label { display: inline-flex; align-items: center; gap: .3rem; min-height: 2.75rem; margin-right: 1rem; }
figure { margin: 1rem 0; overflow-x: auto; }
figure svg { display: block; max-width: none; background: #fff; }
[data-film] { cursor: default; }
.js tr[data-film].drawn { cursor: pointer; }
.sheet > h3, tbody.part th { font-size: 1rem; }
.sheet > h3 { margin: 1.5rem 0 0; }
.about { color: var(--soft); font-weight: 400; overflow-wrap: anywhere; }
.empty { margin: 1rem 0 0; }

table, thead, tbody, tfoot { display: block; }
.scroll { overflow-x: auto; }
.strip { width: var(--wide); }
.scroll, .strip { content-visibility: auto; contain-intrinsic-height: auto var(--tall); }
table { margin-top: .75rem; min-width: var(--least); }
tbody { content-visibility: auto; contain-intrinsic-size: auto var(--tall, 10rem); }
tr { display: grid; grid-template-columns: var(--cols); column-gap: 1rem; border-bottom: 1px solid var(--rule);
  padding: .45rem 0; align-items: start; }
tr[hidden], .hide { display: none; }
thead tr { border-bottom: 2px solid var(--ink); align-items: end; }
th, td { text-align: start; padding: 0; font-weight: 400; min-width: 0; overflow-wrap: anywhere; }
thead th { font-size: .85rem; font-weight: 650; color: var(--soft); overflow-wrap: normal; }
.r { text-align: right; }
.n { white-space: nowrap; overflow-wrap: normal; }
.a { word-break: break-all; }
td i, th i { display: block; font-style: normal; }
tr.band { display: block; background: var(--hatch); padding: .3rem 0 .3rem 3rem; }
tr.band td { display: inline; background: var(--paper); box-decoration-break: clone; padding: 0 .3rem; }
tr.part { display: block; padding: 1rem 0 .3rem; border-bottom: 1px solid var(--ink); }
tfoot tr, tr.total { border-bottom: 1px solid var(--ink); }
.tick label { display: flex; align-items: flex-start; justify-content: center; min-height: 2.75rem; min-width: 2.75rem;
  margin: -.45rem 0 -.45rem -.6rem; padding-top: .6rem; }
.tick input { appearance: none; width: 1.1rem; height: 1.1rem; border: 1.5px solid var(--ink); border-radius: .2rem; margin: 0;
  background: var(--paper); }
.tick input:checked { background: linear-gradient(45deg, #0000 45%, var(--ink) 45% 55%, #0000 55%),
  linear-gradient(-45deg, #0000 45%, var(--ink) 45% 55%, #0000 55%), var(--paper); }
tr.done td, tr.done th { opacity: .55; }
tr.done .tick { opacity: 1; }
.here { background: var(--here); }
svg .here { outline: 3px solid #000; outline-offset: 2px; }
.note { display: block; border-left: .35rem solid var(--ink); padding-left: .6rem; margin: .35rem 0; font-size: .85rem; }
.note.wrong { border-color: var(--wrong); }
.note.speed { border-left-style: double; }
.show { font: inherit; color: inherit; background: none; border: 0; padding: 0; text-decoration: underline; cursor: pointer; }

@media screen and (max-width: 46rem) {
  section { padding: .75rem; border-radius: 0; margin-left: -1rem; margin-right: -1rem; }
  table { min-width: 0; }
  thead { position: absolute; width: 1px; height: 1px; overflow: hidden; clip-path: inset(50%); }
  tr { grid-template-columns: 2.75rem 1fr; padding: .7rem 0; }
  tr > * { grid-column: 2; }
  tr > .tick { grid-column: 1; grid-row: 1 / span 30; }
  td.r, th.r { text-align: start; }
  .n { white-space: normal; overflow-wrap: anywhere; }
  tbody td:not(.tick):empty, tfoot td:empty { display: none; }
  tr.band { padding-left: .5rem; }
}
@media (prefers-reduced-motion: no-preference) { html { scroll-behavior: smooth; } }
@media print {
  :root { --ink: #000; --soft: #555; --rule: #bbb; --paper: #fff; --back: #fff; --wrong: #000; --here: #fff; color-scheme: light; }
  html { font-size: 9.5pt; background: #fff; }
  * { print-color-adjust: exact; }
  .top, .tools, .columns, .skip { display: none; }
  main { padding: 0; }
  section { border: 0; border-radius: 0; margin: 0; padding: 0; break-before: page; }
  section:first-of-type { break-before: auto; }
  .head { break-after: avoid; }
  .sheet { break-before: page; }
  .sheet.first { break-before: auto; }
  .facts, .strip { break-inside: avoid; }
  figure { overflow: visible; }
  figure svg { max-width: 100%; height: auto; }
  figcaption { break-before: avoid; }
  .scroll { overflow: visible; }
  .scroll, .strip { content-visibility: visible; }
  .strip { width: auto; }
  table { display: table; width: 100%; min-width: 0; border-collapse: collapse; }
  thead { display: table-header-group; }
  tbody { display: table-row-group; content-visibility: visible; }
  tfoot { display: table-row-group; }
  tr, tr.band, tr.part { display: table-row; break-inside: avoid; }
  tr[hidden] { display: none; }
  tr.band { break-before: avoid; }
  tr.part { break-after: avoid; }
  th, td, tr.band td { display: table-cell; vertical-align: top; padding: .4rem .8rem .4rem 0; border-bottom: .5pt solid #bbb; }
  tr.band td { background: var(--hatch); padding-left: 3rem; }
  thead th { border-bottom: 1pt solid #000; vertical-align: bottom; min-width: calc(var(--w) * 1.25 + .8rem); overflow-wrap: normal; }
  .show { text-decoration: none; }
  .hide, td.hide, th.hide { display: none; }
  .tick label { margin: 0; padding: 0; min-width: 0; min-height: 0; }
  .tick input { width: 9pt; height: 9pt; border-width: .75pt; }
  tr.done td, tr.done th { opacity: 1; }
  .counting { display: none; }
}
)css";

} // namespace documents
