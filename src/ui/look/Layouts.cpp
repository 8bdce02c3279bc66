#include "ui/look/Layouts.h"

#include <QBoxLayout>

namespace quorbit {

namespace {

template <class Layout>
Layout *bare(QWidget *owner, int spacing) {
    auto *layout = new Layout(owner);
    layout->setContentsMargins({});
    layout->setSpacing(spacing);
    return layout;
}

} // namespace

QVBoxLayout *columnLayout(QWidget *owner, int spacing) {
    return bare<QVBoxLayout>(owner, spacing);
}

QHBoxLayout *lineLayout(QWidget *owner, int spacing) {
    return bare<QHBoxLayout>(owner, spacing);
}

} // namespace quorbit
