#pragma once

#include "settings/canvas/ScreenLayout.h"

#include <map>
#include <optional>

namespace quorbit {

/// Where the screens lie as the user sees them: as the service published it, and over that what the user has
/// moved and the service has not answered yet.
///
/// Only what the user moved is held; every other screen is where the service published it last, in what is
/// shown and in what is saved. A drop is saved at once. Steps are saved while no other save is under way, all
/// that came since in one, so that the place where they end is saved last.
class Arrangement {
public:
    struct Save {
        int number = 0;
        ScreenLayout layout; ///< with an entry for every card, normalized
    };

    const ScreenDesk &published() const { return published_; }
    ScreenDesk shown() const;

    /// Takes over what the service published and forgets what was moved of devices that have gone. Gives how
    /// far the screens that nobody moved went with the origin of the layout; what the user moved went along.
    QPointF publish(const ScreenDesk &desk);

    /// Keeps a screen where it is shown, whatever is published or answered, until it is dropped or let go.
    void hold(const QString &id);
    void letGo() { held_.clear(); }
    bool isHolding() const { return !held_.empty(); }
    /// Moves the screen that is held. Distances are in layout units; one that is not finite moves nothing.
    Save drop(QPointF distance);

    void step(const QString &id, QPointF distance);
    /// What is to be saved now that no other save is under way, if there is anything.
    std::optional<Save> nextSave();
    /// The same while others are under way, for those who cannot wait for them.
    std::optional<Save> lastSave();

    /// A save has ended: it was answered, and what it brought about is published, or it failed.
    void ended(int save, bool isAnswered);

private:
    ScreenLayout sentMoves() const;
    ScreenLayout moves() const;
    QPointF originShift(const ScreenDesk &next) const;
    Save send(ScreenLayout moves);

    ScreenDesk published_;
    /// The moved screens by the number of the save, where the layout that was published last has its origin.
    std::map<int, ScreenLayout> sent_;
    ScreenLayout stepped_; ///< not sent yet
    ScreenLayout held_;    ///< one at most
    int newest_ = 0;
    int underWay_ = 0; ///< also those that a later answer has made irrelevant
};

} // namespace quorbit
