#include "settings/canvas/ScreenLayoutCanvas.h"

#include "settings/canvas/CanvasArea.h"
#include "ui/text/IconLabel.h"

#include <QCoreApplication>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {
constexpr int captionDistance = 8;
constexpr int captionGap = 3;
} // namespace

ScreenLayoutCanvas::ScreenLayoutCanvas(QWidget *parent) : QWidget(parent), area_(new CanvasArea) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    auto *captions = new QVBoxLayout;
    captions->setSpacing(captionGap);
    const auto addCaption = [captions](const QString &symbol, const QString &text) {
        captions->addWidget(new IconLabel(symbol, text, TextStyle::caption, TextColor::secondary), 0,
                            Qt::AlignHCenter);
    };
    addCaption(u"hand.draw"_s, qtTrId("kvm.canvas.drag_arrange"));
    addCaption(u"cursorarrow.rays"_s, qtTrId("kvm.canvas.tap_master"));

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->setSpacing(captionDistance);
    column->addWidget(area_);
    column->addLayout(captions);
    connect(area_, &CanvasArea::arranged, this, &ScreenLayoutCanvas::arranged);
    connect(area_, &CanvasArea::masterPicked, this, &ScreenLayoutCanvas::masterPicked);
    connect(area_, &CanvasArea::currentCardAt, this,
            [this](const QRect &place) { Q_EMIT currentCardAt(place.translated(area_->pos())); });
}

void ScreenLayoutCanvas::render(const ScreenDesk &desk, const QString &masterID) {
    area_->render(desk, masterID);
}

void ScreenLayoutCanvas::saveEnded(int save, bool isAnswered) {
    area_->saveEnded(save, isAnswered);
}

std::optional<Arrangement::Save> ScreenLayoutCanvas::lastSave() {
    return area_->lastSave();
}

} // namespace quorbit
