#include "company/first_steps.h"

#include <QSettings>

#include "company/master_templates.h"

namespace company {
namespace {

using namespace Qt::StringLiterals;

const QString kGuide = u"GuideDismissed"_s;

}  // namespace

std::vector<FirstStep> firstSteps(store::Connection& cnMain) {
    const auto filled = [&cnMain](const QString& table) {
        return cnMain.hasTable(table) &&
               !cnMain.query(u"select 1 from \"%1\" limit 1"_s.arg(table)).isEmpty();
    };
    bool masters = true;
    for (const MasterTemplate& master : masterTemplates())
        masters = masters && (!master.required || filled(master.table));
    return {
        {u"★のコード表に内容を入れる"_s, u"frmMenuMasuta"_s, masters},
        {u"社員を登録する（CSVの取込か、履歴書）"_s, u"frmJinjiTorikomi"_s, filled(u"履歴書テーブル"_s)},
        {u"異動履歴を登録する"_s, u"frmJinjiTorikomi"_s, filled(u"異動テーブル"_s)},
        {u"配分の区分と基準を設計する"_s, u"frmMenuSSyouyo"_s, filled(u"S配分区分"_s)},
        {u"最初の基準日を取り込む"_s, u"frmMenuSSyouyo"_s, filled(u"Sデータ取込年月日運用"_s)},
    };
}

bool guideDismissed(const Places& places, const QString& company) {
    return QSettings(places.settings(), QSettings::IniFormat).value(settingsKey(kGuide, company)).toBool();
}

void dismissGuide(const Places& places, const QString& company) {
    QSettings(places.settings(), QSettings::IniFormat).setValue(settingsKey(kGuide, company), true);
}

}  // namespace company
