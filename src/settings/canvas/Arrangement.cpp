#include "settings/canvas/Arrangement.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace quorbit {

namespace {

void putOver(ScreenLayout &layout, const ScreenLayout &moves) {
    for (const auto &[id, place] : moves)
        layout.insert_or_assign(id, place);
}

/// What most have in common; the lesser one where they are divided.
double median(std::vector<double> values) {
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    const double low = values[(values.size() - 1) / 2];
    const double high = values[values.size() / 2];
    return std::abs(low) < std::abs(high) ? low : high;
}

/// How far most of the screens that are in both layouts moved, apart from the exceptions.
std::optional<QPointF> commonShift(const ScreenLayout &before, const ScreenLayout &after,
                                   const ScreenLayout &exceptions) {
    std::vector<double> x;
    std::vector<double> y;
    for (const auto &[id, place] : after) {
        const auto old = before.find(id);
        if (old == before.end() || exceptions.contains(id))
            continue;
        x.push_back(place.x - old->second.x);
        y.push_back(place.y - old->second.y);
    }
    if (x.empty())
        return std::nullopt;
    return QPointF(median(std::move(x)), median(std::move(y)));
}

} // namespace

ScreenLayout Arrangement::sentMoves() const {
    ScreenLayout moves;
    for (const auto &[save, sent] : sent_)
        putOver(moves, sent);
    return moves;
}

ScreenLayout Arrangement::moves() const {
    ScreenLayout moves = sentMoves();
    putOver(moves, stepped_);
    return moves;
}

ScreenDesk Arrangement::shown() const {
    ScreenDesk desk = published_;
    ScreenLayout all = moves();
    putOver(all, held_);
    if (!all.empty()) {
        desk.layout = pinned(published_);
        putOver(desk.layout, all);
    }
    return desk;
}

/// Layouts are normalized: a screen that goes beyond the first one moves all others.
QPointF Arrangement::originShift(const ScreenDesk &next) const {
    if (next.layout == published_.layout)
        return {};
    ScreenLayout before = pinned(published_);
    putOver(before, sentMoves());
    const ScreenLayout after = pinned({.layout = next.layout, .selfID = {}, .devices = {}}); // what is stored
    ScreenLayout unsent = stepped_;
    putOver(unsent, held_);
    ScreenLayout all = sentMoves();
    putOver(all, unsent);
    const auto shift = commonShift(before, after, all);
    // Where the user has moved them all, what was sent is likely to have been published.
    return shift ? *shift : commonShift(before, after, unsent).value_or(QPointF());
}

QPointF Arrangement::publish(const ScreenDesk &desk) {
    const QPointF shift = originShift(desk);
    published_ = desk;
    const auto follow = [&](ScreenLayout &moves) {
        std::erase_if(moves, [&](const auto &move) { return !hasCard(desk, move.first); });
        for (auto &[id, place] : moves)
            place = movedBy(place, shift);
    };
    for (auto &[save, moves] : sent_)
        follow(moves);
    follow(stepped_);
    follow(held_);
    return shift;
}

void Arrangement::hold(const QString &id) {
    held_ = {{id, rectFor(shown(), id)}};
}

Arrangement::Save Arrangement::drop(QPointF distance) {
    ScreenLayout all = moves();
    for (const auto &[id, place] : std::exchange(held_, {}))
        all.insert_or_assign(id, movedBy(standardized(place), distance));
    stepped_.clear();
    return send(std::move(all));
}

void Arrangement::step(const QString &id, QPointF distance) {
    stepped_.insert_or_assign(id, movedBy(standardized(rectFor(shown(), id)), distance));
}

std::optional<Arrangement::Save> Arrangement::nextSave() {
    return underWay_ > 0 ? std::nullopt : lastSave();
}

std::optional<Arrangement::Save> Arrangement::lastSave() {
    if (stepped_.empty())
        return std::nullopt;
    return send(std::exchange(stepped_, {}));
}

Arrangement::Save Arrangement::send(ScreenLayout moves) {
    sent_[++newest_] = std::move(moves);
    ++underWay_;
    ScreenLayout layout = pinned(published_);
    putOver(layout, sentMoves());
    return {newest_, normalized(std::move(layout))};
}

void Arrangement::ended(int save, bool isAnswered) {
    --underWay_;
    // What was answered holds what was sent before, whenever that is answered.
    sent_.erase(isAnswered ? sent_.begin() : sent_.lower_bound(save), sent_.upper_bound(save));
}

} // namespace quorbit
