#include "wording/HistoryKind.h"

namespace quorbit {

using namespace Qt::StringLiterals;

QString historyKindSymbol(const std::optional<QString> &type) {
    if (type == u"text"_s)
        return u"text.alignleft"_s;
    if (type == u"image"_s)
        return u"photo"_s;
    if (type == u"files"_s)
        return u"doc.on.doc"_s;
    return u"doc"_s;
}

} // namespace quorbit
