#pragma once

#include "settings/kvm/KvmModel.h"

#include <QWidget>

class QVBoxLayout;

namespace quorbit {

/// Says under the screens whose keyboard and mouse drive the others.
class MasterFooter final : public QWidget {
    Q_OBJECT

public:
    explicit MasterFooter(QWidget *parent = nullptr);

    void render(const std::vector<KvmModel::FooterLine> &lines);

private:
    std::vector<KvmModel::FooterLine> shown_;
    QVBoxLayout *column_;
};

} // namespace quorbit
