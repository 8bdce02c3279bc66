#pragma once

#include <QTest>

namespace quorbit::test {

/// Stands at the head of a loop over the rows of a table, and says in which of them a check failed.
class Row {
public:
    explicit Row(QByteArray name) : name_(std::move(name)) {}
    ~Row() {
        if (QTest::currentTestFailed() && !hadFailed_)
            qWarning("in the row \"%s\"", name_.constData());
    }
    Row(const Row &) = delete;
    Row &operator=(const Row &) = delete;

private:
    QByteArray name_;
    bool hadFailed_ = QTest::currentTestFailed(); ///< in a row before
};

} // namespace quorbit::test
