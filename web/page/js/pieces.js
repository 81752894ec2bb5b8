// Markup that comes in pieces: short lists are laid out whole, of long ones what comes near the window, and the rest when
// somebody looks for it.

import {inSlices} from './elements.js';

const few = 60;
const near = '1500px';

export class Pieces {
  /// `onpiece(element)` is called for each piece that was put in its place.
  constructor(root, onpiece = () => {}) {
    Object.assign(this, {root, onpiece, waiting: new Map(), wanted: new Set(), places: new Map(), count: 0});
    this.observer = new IntersectionObserver(entries => this.see(entries), {rootMargin: near});
  }

  take({shell, count, pieces, first}) {
    if (shell !== undefined) return this.begin(shell, count);
    pieces.forEach((html, i) => this.waiting.set(first + i, html));
    return this.putNear();
  }

  begin(shell, count) {
    this.root.innerHTML = shell;
    this.count = count;
    for (const place of this.root.querySelectorAll('[data-piece]')) {
      this.places.set(Number(place.dataset.piece), place);
      this.observer.observe(place);
    }
  }

  see(entries) {
    for (const {target, isIntersecting} of entries) this.wanted[isIntersecting ? 'add' : 'delete'](Number(target.dataset.piece));
    this.putNear();
  }

  putNear() {
    return inSlices([...this.wanted], number => this.put(number));
  }

  put(number) {
    const place = this.places.get(number), html = this.waiting.get(number);
    if (!place || html === undefined) return;
    place.insertAdjacentHTML('beforebegin', html);
    this.onpiece(place.previousElementSibling);
    this.observer.unobserve(place);
    place.remove();
    this.places.delete(number);
    this.waiting.delete(number);
    this.wanted.delete(number);
  }

  /// Once all came.
  settle() {
    return this.count <= few ? this.putAll() : this.putNear();
  }

  putAll() {
    return inSlices([...this.waiting.keys()], number => this.put(number));
  }

  putAllAtOnce() {
    for (const number of [...this.waiting.keys()]) this.put(number);
  }

  /// The pieces that hold a text.
  putWith(text) {
    for (const [number, html] of this.waiting) if (html.includes(text)) this.put(number);
  }

  close() {
    this.observer.disconnect();
    this.waiting.clear();
    this.places.clear();
  }
}
