#pragma once
#include <QDate>
#include <QString>

namespace domain {

/// What names one run: 基準日, 配分区分, 配分基準. Nearly every S table row carries it.
struct RunKey {
    QDate kijunbi;
    QString haibunKubun;
    QString haibunKijun;
    bool operator==(const RunKey&) const = default;
};

}  // namespace domain
