#include "shell/frmMenus.h"

#include <algorithm>
#include <array>

#include "forms/global_record.h"

namespace shell {

namespace {

using Flag = bool forms::GlobalRecord::*;
using Prepare = std::function<void(forms::GlobalRecord&)>;

constexpr std::array<Flag, 11> kSelectionModes = {
    &forms::GlobalRecord::jinji_mode_joukenn,      &forms::GlobalRecord::jinji_mode_daichou,
    &forms::GlobalRecord::jinji_mode_taisyoku,     &forms::GlobalRecord::jinji_mode_fukkatsu,
    &forms::GlobalRecord::jinji_mode_taisyokusya,  &forms::GlobalRecord::jinji_mode_yoteisya,
    &forms::GlobalRecord::jinji_mode_excel,        &forms::GlobalRecord::jinji_mode_kazoku,
    &forms::GlobalRecord::jinji_mode_kazoku_excel, &forms::GlobalRecord::jinji_mode_shikaku,
    &forms::GlobalRecord::jinji_mode_shikaku_excel};

/// The one selection mode that is True when the selection screen opens.
Prepare only(Flag mode) {
    return [mode](forms::GlobalRecord& global) {
        for (Flag other : kSelectionModes) global.*other = other == mode;
    };
}

/// The same from the registration menu, where the record form must not take it for 全員表示.
Prepare onlyOf(Flag mode) {
    return [choose = only(mode)](forms::GlobalRecord& global) {
        choose(global);
        global.rireki_zenin = false;
    };
}

Prepare oneOfTwo(Flag on, Flag off) {
    return [on, off](forms::GlobalRecord& global) {
        global.*on = true;
        global.*off = false;
    };
}

struct Menu {
    QString name;
    QString caption;
    std::vector<forms::MenuEntry> entries;
};

forms::MenuEntry entry(const char* control, const char* caption, const char* screen, Prepare prepare = {}) {
    return {.control = QString::fromUtf8(control),
            .caption = QString::fromUtf8(caption),
            .prepare = std::move(prepare),
            .screen = QString::fromUtf8(screen)};
}
forms::MenuEntry excel(const char* control, Flag mode) {
    forms::MenuEntry sheet = entry(control, "Excel　にデータを送る", "frmJinjiSiborikomi", onlyOf(mode));
    sheet.output = forms::MenuForm::Output::Excel;
    return sheet;
}
forms::MenuEntry back(const char* control, const char* caption) {
    return entry(control, caption, "");
}

Menu bonusMenu() {
    using G = forms::GlobalRecord;
    return {QStringLiteral("frmMenuSSyouyo"),
            QStringLiteral("賞与配分メニュー"),
            {entry("Command1", "配分設計(&S)", "frmSHaibunSekkei",
                   oneOfTwo(&G::haibun_sekkei_mode, &G::haibun_jikkou_mode)),
             entry("Command2", "配分実行(&G)", "frmSDatatorikomi",
                   oneOfTwo(&G::haibun_jikkou_mode, &G::haibun_sekkei_mode)),
             entry("Command4", "年間支給額(&N)", "frmSNenkan"), back("Command5", "メニューへ戻る(&B)")}};
}

Menu personnelMenu() {
    return {
        QStringLiteral("frmMenuJinji"),
        QStringLiteral("人事情報メニュー"),
        {entry("Command1", "入力項目設定(&J)", "frmJinjiCheck"),
         entry("Command2", "人事情報登録(&T)", "frmMenuJinjiSub"),
         entry("Command4", "退職処理(&T)", "frmMenuJinjiTaisyoku"), back("Command3", "メニューへ戻る(&B)")}};
}

Menu registrationMenu() {
    using G = forms::GlobalRecord;
    const char* const select = "frmJinjiSiborikomi";
    return {QStringLiteral("frmMenuJinjiSub"),
            QStringLiteral("人事情報登録メニュー"),
            {entry("Command1", "　　追加・編集　　全員表示(&A)", "frmRireki",
                   [](forms::GlobalRecord& global) { global.rireki_zenin = true; }),
             entry("Command2", "　　追加・編集　　条件選択(&S)", select, onlyOf(&G::jinji_mode_joukenn)),
             entry("Command4", "社員台帳(&R)", select, onlyOf(&G::jinji_mode_daichou)),
             excel("Command5", &G::jinji_mode_excel),
             entry("Command6", "家族情報の確認", select, onlyOf(&G::jinji_mode_kazoku)),
             excel("Command7", &G::jinji_mode_kazoku_excel),
             entry("Command8", "資格・免許保有状況の確認", select, onlyOf(&G::jinji_mode_shikaku)),
             excel("Command9", &G::jinji_mode_shikaku_excel),
             entry("Command10", "社員・異動の取込(&D)", "frmJinjiTorikomi"),
             back("Command3", "人事情報ﾒﾆｭｰへ戻る(&B)")}};
}

Menu retirementMenu() {
    using G = forms::GlobalRecord;
    return {QStringLiteral("frmMenuJinjiTaisyoku"),
            QStringLiteral("退職処理メニュー"),
            {entry("Command1", "予定者一覧(&Y)", "frmJinjiSiborikomi", only(&G::jinji_mode_yoteisya)),
             entry("Command2", "退職処理(&R)", "frmJinjiSiborikomi", only(&G::jinji_mode_taisyoku)),
             entry("Command3", "退職者一覧(&G)", "frmJinjiSiborikomi2",
                   oneOfTwo(&G::jinji_mode_taisyokusya, &G::jinji_mode_fukkatsu)),
             entry("Command5", "復活処理(&F)", "frmJinjiSiborikomi2",
                   oneOfTwo(&G::jinji_mode_fukkatsu, &G::jinji_mode_taisyokusya)),
             back("Command4", "人事情報ﾒﾆｭｰへ戻る(&B)")}};
}

const std::vector<Menu>& menus() {
    static const std::vector<Menu> all = {bonusMenu(), personnelMenu(), registrationMenu(), retirementMenu()};
    return all;
}

const Menu& menuNamed(const QString& name) {
    const auto found =
        std::find_if(menus().begin(), menus().end(), [&](const Menu& m) { return m.name == name; });
    Q_ASSERT(found != menus().end());
    return *found;
}

std::vector<forms::MenuEntry> withHelp(const Menu& menu, forms::House& house) {
    std::vector<forms::MenuEntry> entries = menu.entries;
    entries.push_back(helpEntry(house, menu.name));
    return entries;
}

}  // namespace

forms::MenuEntry helpEntry(forms::House& house, const QString& screen) {
    return {.control = QStringLiteral("Command11"),
            .caption = QStringLiteral("ヘルプ(&H)"),
            .action = [&house, screen] {
                if (house.help) house.help(screen);
            }};
}

frmMenus::frmMenus(const QString& name, forms::House& house, QWidget* parent)
    : forms::MenuForm(name, menuNamed(name).caption, house, parent, withHelp(menuNamed(name), house)) {}

}  // namespace shell
