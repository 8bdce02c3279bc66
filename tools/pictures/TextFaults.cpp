#include "TextFaults.h"

#include <QAccessible>
#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

/// Whether it is read, or worked and does not only move what it holds.
bool needsName(QAccessibleInterface &element) {
    switch (element.role()) {
    case QAccessible::ScrollBar:
    case QAccessible::PageTabList:
    case QAccessible::List:
        return false;
    case QAccessible::StaticText:
    case QAccessible::Heading:
        return true;
    default:
        break;
    }
    QStringList actions =
        element.actionInterface() ? element.actionInterface()->actionNames() : QStringList();
    actions.removeAll(QAccessibleActionInterface::setFocusAction());
    return element.state().focusable || !actions.isEmpty();
}

} // namespace

QString OwnTexts::translate(const char * /*context*/, const char *key, const char * /*disambiguation*/,
                            int /*n*/) const {
    keys_.insert(key);
    return {}; // the next translator has the text
}

bool OwnTexts::contains(const QString &text) const {
    const QSet<QByteArray> keys = keys_;
    return std::ranges::any_of(keys, [&](auto &key) { return qtTrId(key.constData()) == text; });
}

bool OwnTexts::keyIn(const QString &text) const {
    return std::ranges::any_of(
        keys_, [&](auto &key) { return key.contains('.') && text.contains(QLatin1String(key)); });
}

QStringList textFaults(QAccessibleInterface &view, const OwnTexts &ownTexts) {
    static const QRegularExpression placeholder(u"%L?[0-9n]"_s);
    if (view.state().invisible)
        return {};
    const QString name = view.text(QAccessible::Name);
    QStringList faults;
    for (const QString &text : {name, view.text(QAccessible::Description), view.text(QAccessible::Value),
                                view.text(QAccessible::Help)}) {
        if (placeholder.match(text).hasMatch() || ownTexts.keyIn(text))
            faults << u"says “%1”"_s.arg(text);
    }
    if (name.isEmpty() && needsName(view))
        faults << QLatin1String(qAccessibleRoleString(view.role())) + u" has no name"_s;
    for (int child = 0; child < view.childCount(); ++child)
        faults += textFaults(*view.child(child), ownTexts);
    return faults;
}

} // namespace quorbit
