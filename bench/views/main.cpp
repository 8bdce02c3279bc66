#include "Timing.h"
#include "settings/CanvasWindow.h"
#include "settings/SettingsWorld.h"
#include "settings/sync/HistoryList.h"
#include "settings/sync/SyncTab.h"
#include "support/TestWorld.h"

#include <QLineEdit>

#include <cmath>
#include <cstdio>

/// What stands between an event and the painted pixels: bench_views key|drag. Prints a line for each round,
/// in milliseconds of computing; there is nothing to wait for in between.

using namespace Qt::StringLiterals;
using namespace quorbit;
using namespace quorbit::test;

namespace {

constexpr int entryCount = 10'000;
constexpr int keyRounds = 20;
constexpr int cardCount = 200;
constexpr int frameCount = 200;

/// The first key of a search, which is the slowest: it sees the history for the first time and hides most of
/// it.
void pressKeys() {
    ServiceState state = usualState();
    state.history = longHistory(entryCount);
    SettingsWorld world(state);
    if (world.state().history.size() != entryCount)
        qFatal("the history does not come");
    for (int round = 0; round < keyRounds; ++round) {
        SyncTab tab(*world.daemon);
        tab.showState();
        tab.resize(580, 520);
        openWindow(tab);
        auto *list = tab.findChild<HistoryList *>();
        auto *search = tab.findChild<QLineEdit *>();
        search->setFocus();
        const std::size_t before = list->rows().size();
        std::printf("%.3f\n", computingTime([&] {
                        QTest::keyClick(search, 'k'); // of "haystack"
                        QCoreApplication::sendPostedEvents();
                        list->repaint();
                    }));
        if (list->rows().size() == before || list->rows().empty())
            qFatal("the key finds all or nothing");
    }
}

/// Counts how often a widget is painted.
class PaintCount : public QObject {
public:
    explicit PaintCount(QWidget *widget) { widget->installEventFilter(this); }
    bool eventFilter(QObject *, QEvent *event) override {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
    int count = 0;
};

ScreenDesk crowd() {
    ScreenDesk desk{{}, u"0"_s, {}};
    for (int i = 0; i < cardCount; ++i) {
        desk.devices.push_back({QString::number(i), u"Computer %1"_s.arg(i), u"linux"_s, i % 2 == 0});
        desk.layout[QString::number(i)] = {i % 20 * 1800.0, std::floor(i / 20.0) * 1030, 1778, 1000};
    }
    return desk;
}

void drag() {
    CanvasWindow window(crowd());
    const QPoint from = window.middle(u"110"_s);
    window.press(from);
    const PaintCount painted(window.area);
    for (int frame = 0; frame < frameCount; ++frame) {
        const QPointF by(100 * std::sin(frame / 10.0), 60 * std::cos(frame / 10.0));
        std::printf("%.3f\n", computingTime([&] {
                        window.move(from + by.toPoint());
                        QCoreApplication::sendPostedEvents();
                        QCoreApplication::processEvents();
                    }));
    }
    if (painted.count < frameCount)
        qFatal("only %d frames were painted", painted.count);
}

} // namespace

int main(int argc, char **argv) {
    useTestFonts();
    QApplication app(argc, argv);
    QApplication::setStyle(new ControlStyle);
    useLanguage(u"en"_s);
    if (app.arguments().value(1) == "key"_L1)
        pressKeys();
    else
        drag();
}
