#include "changelist/proof/film_strips.h"

FilmStrips::Strip FilmStrips::make(const FilmStretch& stretch) {
    random_ ^= random_ << 13;
    random_ ^= random_ >> 17;
    random_ ^= random_ << 5;
    nodes_.push_back({stretch, stretch.length, no_film, no_film, random_});
    return static_cast<Strip>(nodes_.size() - 1);
}

void FilmStrips::measure(Strip strip) {
    Node& node = nodes_[strip];
    node.length = nodes_[node.left].length + node.stretch.length + nodes_[node.right].length;
}

FilmStrips::Halves FilmStrips::cut(Strip strip, std::int64_t frames) {
    if (strip == no_film) return {};
    const std::int64_t ahead = length(nodes_[strip].left);
    const FilmStretch stretch = nodes_[strip].stretch;
    if (frames <= ahead) {
        const Halves halves = cut(nodes_[strip].left, frames);
        nodes_[strip].left = halves.tail;
        measure(strip);
        return {halves.head, strip};
    }
    const std::int64_t inside = frames - ahead;
    if (inside >= stretch.length) {
        const Halves halves = cut(nodes_[strip].right, inside - stretch.length);
        nodes_[strip].right = halves.head;
        measure(strip);
        return {strip, halves.tail};
    }
    const Strip behind = splice(make(stretch.part(inside, stretch.length - inside)), nodes_[strip].right);
    nodes_[strip].stretch.length = inside;
    nodes_[strip].right = no_film;
    measure(strip);
    return {strip, behind};
}

FilmStrips::Strip FilmStrips::splice(Strip head, Strip tail) {
    if (head == no_film) return tail;
    if (tail == no_film) return head;
    if (nodes_[head].priority > nodes_[tail].priority) {
        nodes_[head].right = splice(nodes_[head].right, tail);
        measure(head);
        return head;
    }
    nodes_[tail].left = splice(head, nodes_[tail].left);
    measure(tail);
    return tail;
}

void FilmStrips::mark(Strip strip, int step) {
    if (strip == no_film) return;
    nodes_[strip].stretch.step = step;
    mark(nodes_[strip].left, step);
    mark(nodes_[strip].right, step);
}

Vector<FilmStretch> FilmStrips::stretches(Strip strip) const {
    Vector<FilmStretch> found;
    collect(strip, found);
    return found;
}

void FilmStrips::collect(Strip strip, Vector<FilmStretch>& found) const {
    if (strip == no_film) return;
    collect(nodes_[strip].left, found);
    found.push_back(nodes_[strip].stretch);
    collect(nodes_[strip].right, found);
}
