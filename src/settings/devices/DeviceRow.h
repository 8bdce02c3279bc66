#pragma once

#include "settings/devices/DevicesModel.h"

#include <QWidget>

namespace quorbit {

class Button;
class SelectableText;
class SymbolLabel;
class TextLabel;

/// A paired computer, with a button that asks for its removal.
class DeviceRow final : public QWidget {
    Q_OBJECT

public:
    explicit DeviceRow(const DevicesModel::Row &model, QWidget *parent = nullptr);

    QString deviceId() const { return shown_.deviceId; }
    bool isFor(const DevicesModel::Row &model) const { return shown_.deviceId == model.deviceId; }
    void render(const DevicesModel::Row &model);
    /// For the order in which the Tab key visits the rows.
    QWidget *firstFocusStop() const;
    QWidget *lastFocusStop() const;

Q_SIGNALS:
    void removeRequested();

private:
    void fill(const DevicesModel::Row &model);

    DevicesModel::Row shown_;
    SymbolLabel *symbol_;
    TextLabel *name_;
    TextLabel *badge_;
    SelectableText *fingerprint_;
    Button *remove_;
};

} // namespace quorbit
