#pragma once

#include "ui/controls/Pressable.h"

#include <QList>
#include <QWidget>

namespace quorbit {

class ChoiceBar;

struct Choice {
    QString title;
    /// Empty for none.
    QString symbol;

    bool operator==(const Choice &) const = default;
};

/// One choice of a bar.
class ChoiceItem final : public Pressable {
    Q_OBJECT

public:
    ChoiceItem(ChoiceBar *bar, double ringRadius);

    const Choice &choice() const { return choice_; }
    bool isCurrent() const { return current_; }
    void setChoice(const Choice &choice);
    void setCurrent(bool current);

    QSize sizeHint() const override;
    QAccessible::Role accessibleRole() const override;
    QString accessibleFallbackName() const override { return choice_.title; }
    void addAccessibleState(QAccessible::State &state) const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    ChoiceBar *bar_;
    Choice choice_;
    bool current_ = false;
};

/// A row of choices of which one is current. Clicks and arrow keys ask for another by picked(); what is shown
/// changes with setCurrent() only. The bar is one stop for the Tab key.
class ChoiceBar : public QWidget, public AccessibleControl {
    Q_OBJECT

public:
    void setChoices(const QList<Choice> &choices);
    int current() const { return current_; }
    ChoiceItem *item(int index) const { return items_[index]; }
    /// -1 for none.
    void setCurrent(int index);

    bool isAccessibleLeaf() const override { return false; }

    virtual QAccessible::Role itemRole() const = 0;
    virtual QSize itemSize(const Choice &choice) const = 0;
    virtual void paintItem(QPainter &painter, const ChoiceItem &item) const = 0;
    /// Answers the keys that move between the choices; tells whether it was one.
    bool moveFrom(const ChoiceItem &item, int key);

Q_SIGNALS:
    void picked(int index);

protected:
    ChoiceBar(double ringRadius, int spacing, QMargins margins, QWidget *parent);
    const QList<ChoiceItem *> &items() const { return items_; }

private:
    void updateFocusStops();

    double ringRadius_;
    QList<ChoiceItem *> items_;
    int current_ = -1;
};

} // namespace quorbit
