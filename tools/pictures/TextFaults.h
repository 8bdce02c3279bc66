#pragma once

#include <QSet>
#include <QStringList>
#include <QTranslator>

class QAccessibleInterface;

namespace quorbit {

/// Knows the program's own texts, all that were asked for. Other texts are names that others gave.
class OwnTexts final : public QTranslator {
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *key, const char *disambiguation, int n) const override;
    bool contains(const QString &text) const;
    /// Whether a key stands in the text where its translation should.
    bool keyIn(const QString &text) const;

private:
    mutable QSet<QByteArray> keys_;
};

/// What is wrong with the texts that are told of a view: a placeholder that nothing was put into, a key that
/// no table has, nothing at all where a control needs a name or a text is shown.
QStringList textFaults(QAccessibleInterface &view, const OwnTexts &ownTexts);

} // namespace quorbit
