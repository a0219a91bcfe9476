#include "forms/own_copy.h"

#include "company/backup.h"
#include "forms/box.h"
#include "forms/global_record.h"

namespace forms {

void keepOwnCopy(widgets::Form* screen, House& house, const QString& reason) {
    const QString title = QStringLiteral("自動バックアップ");
    try {
        company::keepCopy(house.global.places(), house.global.panels.folder, reason);
    } catch (const store::Error& error) {
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
