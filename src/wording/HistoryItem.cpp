#include "wording/HistoryItem.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace quorbit {

QString historyKindSymbol(const std::optional<QString> &type) {
    if (type == u"text"_s)
        return u"text.alignleft"_s;
    if (type == u"image"_s)
        return u"photo"_s;
    if (type == u"files"_s)
        return u"doc.on.doc"_s;
    return u"doc"_s;
}

QString spokenHistoryItem(const QString &preview, const QString &source) {
    if (preview.isEmpty() && source.isEmpty())
        return qtTrId("common.unnamed");
    return preview.isEmpty() || source.isEmpty() ? preview + source : preview + u", "_s + source;
}

} // namespace quorbit
