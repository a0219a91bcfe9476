#include "forms/own_copy.h"

#include "company/backup.h"
#include "forms/box.h"
#include "forms/global_record.h"
#include "forms/progress.h"

namespace forms {

void keepOwnCopy(widgets::Form* screen, House& house, const QString& reason) {
    const QString title = QStringLiteral("自動バックアップ");
    bool stopped = false;
    try {
        ProgressBox box(screen, QStringLiteral("この処理の前の自動バックアップを作成しています。"));
        const auto step = [&stopped, told = box.step()](qint64 done, qint64 whole) {
            stopped = !told(done, whole);
            return !stopped;
        };
        company::keepCopy(house.global.places(), house.global.panels.folder, reason, step);
    } catch (const store::Error& error) {
        if (stopped) throw store::Error(error.reason(), QStringLiteral("処理を中止しました。"));
        const bool goOn = confirmLoss(
            screen,
            QStringLiteral(
                "この処理の前の自動バックアップを作成できません。\n%1\n\nバックアップなしで続けますか？")
                .arg(error.text()),
            title, QStringLiteral("続ける(&C)"), QStringLiteral("中止する(&B)"));
        if (!goOn) throw store::Error(error.reason(), QStringLiteral("処理を中止しました。"));
    }
}

}  // namespace forms
