#include "menubar/HistoryRow.h"
#include "menubar/MenuBarView.h"
#include "menubar/PanelStates.h"
#include "pictures/Picture.h"

#include <QCoreApplication>
#include <QEnterEvent>

using namespace Qt::StringLiterals;

namespace quorbit {

std::vector<Picture> panelPictures() {
    const auto hoverSecondEntry = [](QWidget &panel, const TimeFormats &) {
        QEnterEvent enter{QPointF(), QPointF(), QPointF()};
        if (const auto rows = panel.findChildren<HistoryRow *>(); rows.size() > 1)
            QCoreApplication::sendEvent(rows.at(1), &enter);
    };
    std::vector<Picture> pictures;
    for (const PanelState &state : panelStates()) {
        const auto make = [state](const TimeFormats &) {
            auto panel = std::make_unique<MenuBarView>();
            panel->render(state.model());
            return panel;
        };
        pictures.push_back({u"panel/"_s + state.name, make, {}, hoverSecondEntry});
    }
    return pictures;
}

} // namespace quorbit
