#pragma once
#include <QPushButton>

#include "forms/global_record.h"
#include "forms/screens.h"
#include "prep/run_company.h"
#include "screen_driver.h"
#include "widgets/form.h"

namespace preptest {

using namespace support;
using forms::BoxAnswer;
using forms::BoxIcon;

/// Screens of a run over a company, without a main window.
class RunScreens : public RunCompany {
  protected:
    explicit RunScreens(Content content) : RunCompany(content), house_{global_, screens_} {
        global_.cn_main = std::move(owner_);
        global_.app_dir = folder_.programDir();
        global_.panels.folder = folder_.company();
        global_.haibun_jikkou_mode = true;
    }
    template <class Screen>
    void addScreen(const QString& name) {
        screens_.add(name, [](forms::House& house, QWidget* parent) { return new Screen(house, parent); });
    }
    /// Screens of a next step that only tell that they were there.
    void addPlain(const QStringList& names) {
        for (const QString& name : names)
            screens_.add(name, [name](forms::House&, QWidget* parent) {
                return new widgets::Form(name, name, parent);
            });
    }
    /// Operates a screen and closes it if the step left it open.
    template <class Screen>
    void open(const ScreenDriver::Step& step) {
        Screen form(house_, nullptr);
        driver_.run(form, closing(step));
    }
    static ScreenDriver::Step closing(const ScreenDriver::Step& step) {
        return [step](QDialog& form) {
            step(form);
            if (form.isVisible()) form.close();
        };
    }
    /// The screen `name` comes next; it is looked at and left.
    void expectScreen(
        const QString& name, const ScreenDriver::Step& look = [](QDialog&) {}) {
        driver_.onScreen(name, closing(look));
    }
    /// The click is answered by this box and nothing else.
    void clickTold(QDialog& form, const QString& button, const QString& text, const QString& title,
                   BoxAnswer answer = BoxAnswer::Ok, std::optional<BoxIcon> icon = {}) {
        driver_.expectBox(text, title, answer, icon);
        click(form, button);
    }
    /// The buttons that can be pressed.
    static QString offered(const QDialog& form) {
        QStringList names;
        for (const auto* button : form.findChildren<QPushButton*>())
            if (button->isVisible() && button->isEnabled()) names << button->objectName();
        return names.join(u' ');
    }
    /// One sign for each radio button name_0, name_1, …: "X" is set, "x" is not, "-" is hidden.
    static QString options(QDialog& form, const QString& name = u"Option1"_s, int count = 4) {
        QString signs;
        for (int i = 0; i < count; ++i) {
            const QString option = u"%1_%2"_s.arg(name).arg(i);
            signs += !visible(form, option) ? u'-' : checked(form, option) ? u'X' : u'x';
        }
        return signs;
    }
    void expectRollback() {
        driver_.expectBox(u"処理中にエラーが発生しました。処理を取り消します。"_s, u"取消"_s);
    }
    /// From now on writes of this kind fail ("INSERT ON S実行総額配分").
    void breakWrites(const QString& event) {
        sql(u"CREATE TEMP TRIGGER 故障 BEFORE %1 BEGIN SELECT RAISE(ABORT, 'fault'); END"_s.arg(event));
    }
    void repairWrites() { sql(u"DROP TRIGGER 故障"_s); }

    forms::GlobalRecord global_;
    forms::ScreenRegistry screens_;
    forms::House house_;
    ScreenDriver driver_;
};

}  // namespace preptest
