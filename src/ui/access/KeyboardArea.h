#pragma once

#include <QList>
#include <QPointer>
#include <QWidget>

#include <memory>

namespace quorbit {

/// The part of a window that the Tab key goes round in: what the window contains, or a sheet over it.
///
/// In it the keyboard is where its ring or a caret is seen. A click shows no ring and leaves the keyboard
/// only to what takes it by a click, a text field; and where the toolkit would hand the focus of a control
/// that is hidden, disabled or deleted to the next one, unasked, the area takes it. The area does nothing
/// with keys, and the Tab key goes on from where the control was. It needs a name for screen readers, which
/// hear that it has the focus.
class KeyboardArea : public QWidget {
    Q_OBJECT

public:
    explicit KeyboardArea(QWidget *parent = nullptr);
    ~KeyboardArea() override;

    /// The area that a widget belongs to, or nullptr.
    static KeyboardArea *of(const QWidget *widget);

    /// Takes the focus. The Tab key goes on from `place`, or starts at the top.
    void rest(QWidget *place = nullptr);

protected:
    /// For an area that covers others: keeps the focus as it is there until resumeBelow().
    void pauseBelow();
    void resumeBelow();

    bool focusNextPrevChild(bool next) override;

private:
    class Watcher;
    using Chain = QList<QPointer<QWidget>>;
    friend bool worksByKeyboard(const QWidget &control);

    QWidget *focused() const;
    bool canTake(const QWidget *control) const;
    QWidget *firstStop(const Chain &chain, bool next) const;
    void remember(QWidget *place, QWidget *awaited);
    void takeFrom(QWidget *control);
    bool takeBack();
    void workByPointer();
    void notice(QObject *object, QEvent &event);

    bool byKeyboard_ = false;
    /// While the area has the focus: the control that had it, if it is to have it again.
    QPointer<QWidget> awaited_;
    /// Where the Tab key goes on, and all that follows it in the focus chain in case that it is deleted.
    QPointer<QWidget> place_;
    Chain following_;
    QPointer<KeyboardArea> below_;
    /// Last, so that nothing is noticed once the rest has gone.
    std::unique_ptr<Watcher> watcher_;
};

/// Whether the user works by keyboard in the control's area and is to see where: since the focus was moved by
/// a key or by assistive technology, until the next click.
bool worksByKeyboard(const QWidget &control);

} // namespace quorbit
