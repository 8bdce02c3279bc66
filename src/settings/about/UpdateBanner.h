#pragma once

#include "settings/about/AboutModel.h"

#include <QWidget>

namespace quorbit {

class Button;
class IconLabel;
class TextLabel;

/// The panel that tells of a newer release and offers to download it.
class UpdateBanner final : public QWidget {
    Q_OBJECT

public:
    explicit UpdateBanner(QWidget *parent = nullptr);

    void render(const AboutModel::Banner &model);

Q_SIGNALS:
    void downloadRequested();
    void browserRequested();

protected:
    void changeEvent(QEvent *event) override;

private:
    QWidget *makeActionArea();
    void keepActionHeight();

    AboutModel::Banner shown_;
    TextLabel *title_;
    TextLabel *subtitle_;
    TextLabel *notes_;
    QWidget *running_;
    IconLabel *done_;
    Button *download_;
    Button *browser_;
    QWidget *actions_;
};

} // namespace quorbit
