#include "personnel/ui_code_change.h"

#include "forms/box.h"
#include "forms/global_record.h"
#include "forms/guard.h"
#include "forms/screens.h"

namespace personnel {
namespace {

using namespace Qt::StringLiterals;

/// 社員Code「000001」（氏名）, 所属小Code「01－0101」
QString named(const CutOffChange& change) {
    const CodeKey& key = change.from;
    QString kind = u"社員"_s;
    if (change.referent != Referent::Syain) kind = entryTable(change.referent).remove(u"マスタ"_s);
    const QString code = key.parent.isEmpty() ? key.code : key.parent + u'－' + key.code;
    const QString name = change.shimei.isEmpty() ? QString() : u"（%1）"_s.arg(change.shimei);
    return u"%1Code「%2」%3"_s.arg(kind, code, name);
}

QString files(const QStringList& names) {
    return u"・"_s + names.join(u"\n・"_s);
}

QString questionOf(const CutOffChange& change) {
    if (change.removal)
        return u"%1"
               u"を削除する処理が、前回、途中で終了しました。\n\n記録が削除されたファイル（元には戻せません）"
               u"\n%2\n\n"
               "記録が残っているファイル\n%3\n\n残っている記録も削除しますか？"_s.arg(
                   named(change), files(change.changed), files(change.unchanged));
    return u"%1"
           u"を「%2」に変更する処理が、前回、途中で終了しました。\n\n新しいコードになっているファイル\n%3\n\n"
           "元のコードのままのファイル\n%4\n\nどちらのコードにそろえますか？"_s.arg(
               named(change), change.to.code, files(change.changed), files(change.unchanged));
}

void settle(const CompanyDatabases& company, const CutOffChange& change, QWidget* parent) {
    const QString title = u"コード変更の確認"_s;
    if (!change.clear) {
        forms::tell(
            parent,
            u"%1を「%2」に変更する処理が、以前、途中で終了しました。そのあと「%2」は別の記録に使われている"
            "ため、自動ではそろえられません。次のファイルの内容を確認してください。\n\n%3"_s.arg(
                named(change), change.to.code, files(change.changed)),
            title, forms::BoxIcon::Warning);
        return takeBackChange(company, change);
    }
    const bool finish =
        change.removal ? forms::confirmLoss(parent, questionOf(change), title, u"残りも削除する(&D)"_s,
                                            u"残りは削除しない(&B)"_s)
                       // Neither loses anything: to the end is what was wished.
                       : forms::showBox(parent, {questionOf(change), title, forms::BoxIcon::Warning,
                                                 forms::BoxButtons::YesNo, u"新しいコードにそろえる(&N)"_s,
                                                 u"元のコードに戻す(&B)"_s}) == forms::BoxAnswer::Yes;
    if (finish)
        finishChange(company, change);
    else
        takeBackChange(company, change);
}

}  // namespace

void askCutOffChange(forms::House& house, QWidget* parent) {
    auto& global = house.global;
    forms::guarded(nullptr, [&] {
        const CompanyDatabases company{*global.cn_main, global.dataDir(), global.panels.folder};
        if (const auto change = cutOffChange(company)) settle(company, *change, parent);
    });
}

void tellCutOffChange(const CompanyDatabases& company, QWidget* parent) {
    forms::guarded(nullptr, [&] {
        const auto change = cutOffChange(company);
        if (!change) return;
        const QString what =
            change->removal
                ? u"次のファイルからは、%1の記録がすでに削除されています（元には戻せません）。\n\n%2"_s.arg(
                      named(*change), files(change->changed))
                : u"次のファイルは、%1が新しいコード「%2」に変更されたままです。\n\n%3"_s.arg(
                      named(*change), change->to.code, files(change->changed));
        const QString next = change->removal ? u"\n\nもう一度削除すると、残りの記録も削除されます。"_s
                                             : u"\n\nもう一度更新すると、すべてのファイルが新しいコードになり"
                                               u"ます。更新しないときは、次に会社を"
                                               "指定したときに元のコードへ戻せます。"_s;
        forms::tell(parent, what + next, u"取消"_s, forms::BoxIcon::Warning);
    });
}

}  // namespace personnel
