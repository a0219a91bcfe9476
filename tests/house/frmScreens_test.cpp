#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>
#include <QSet>

#include "forms/global_record.h"
#include "forms/record_form.h"
#include "forms/screens.h"
#include "help/frmHelp.h"
#include "main_screens.h"
#include "prep/snapshot.h"
#include "screen_driver.h"
#include "store/date_text.h"
#include "support/company_fixture.h"
#include "widgets/code_combo.h"
#include "widgets/contents_area.h"
#include "widgets/theme.h"

// Every screen of the house on the screen that the platform gives: small ones with the usual and with a large
// font, and a large one (see CMakeLists.txt).
namespace {

using namespace support;
using namespace Qt::StringLiterals;

constexpr int kLargeScreen = 1900;  ///< from this width on nothing scrolls
const QSize kFrame(16, 40);         ///< of the windows; the platform of the tests has none to speak of

class Screens : public testing::Test {
  protected:
    Screens() : house_{global_, registry_} {
        folder_.makeSample();
        folder_.addCompanionMarker();
        registerScreens(registry_, folder_.programDir());
        global_.app_dir = folder_.programDir();
        global_.cn_main = folder_.open();
        global_.panels.company = global_.kaisha_folder = folder_.company();
        global_.kijunbi = global_.nenrei_kijunbi = global_.kinzoku_kijunbi =
            store::formatDate(sample::newestKijunbi());
        global_.haibun_jikkou_mode = global_.rireki_zenin = true;
        global_.haibun_kubun = global_.haibun_kijun = u"01"_s;
        global_.haibun_kubun_mei = u"正社員賞与"_s;
        global_.haibun_kijun_mei = u"一般社員"_s;
        global_.santei_houshiki = global_.santei_koumoku = u"1"_s;
        global_.settei_meisyou = u"1"_s;
        global_.syain_code = u"000001"_s;
        auto& cn = *global_.cn_main;
        prep::SelectIntoX(cn, *prep::readDates(cn, prep::Side::Jikkou, sample::newestKijunbi()));
    }

    void measure(QDialog& form) {
        QCoreApplication::processEvents();
        const QSize room = form.screen()->availableSize();
        const QSize whole = form.size() + kFrame;
        EXPECT_TRUE(whole.width() <= room.width() && whole.height() <= room.height())
            << whole.width() << " x " << whole.height();
        for (QWidget* part : form.findChildren<QWidget*>())
            if (part->isVisible() && part->window() == &form) expectWhole(*part);
        for (auto* area : form.findChildren<widgets::ContentsArea*>()) {
            const QSize cut = area->widget()->size() - area->viewport()->size();
            EXPECT_TRUE(room.width() < kLargeScreen || (cut.width() <= 0 && cut.height() <= 0)) << "scrolls";
        }
        // For the eye: a folder that gets a picture of each.
        if (const QByteArray to = qgetenv("MINT_PICTURES"); !to.isEmpty())
            shot(form, QString::fromLocal8Bit(to) + u'/' + form.objectName() + u'_' +
                           QString::number(++pictures_) + u".png"_s);
    }

    /// A control has what its text needs, inside the window or inside what scrolls.
    static void expectWhole(QWidget& part) {
        const std::string name =
            (part.objectName() + u' ' + QString::fromLatin1(part.metaObject()->className())).toStdString();
        auto* label = qobject_cast<QLabel*>(&part);
        if (!label && !qobject_cast<QAbstractButton*>(&part) && !qobject_cast<QLineEdit*>(&part) &&
            !qobject_cast<QComboBox*>(&part))
            return;
        if (qobject_cast<QAbstractSpinBox*>(part.parentWidget())) return;  // the box has the room for it
        const QSize least = part.minimumSizeHint();
        const bool wraps = label && label->wordWrap();
        const bool field = qobject_cast<QLineEdit*>(&part) || qobject_cast<QComboBox*>(&part);
        EXPECT_GE(part.height(), wraps   ? label->heightForWidth(part.width())
                                 : field ? part.fontMetrics().height()  // in a grid's line
                                         : least.height())
            << name;
        if (!wraps) {
            EXPECT_GE(part.width(), least.width())
                << name << " " << (label ? label->text().toStdString() : "");
        }
        QWidget* holder = part.parentWidget();
        while (!holder->isWindow() &&
               !qobject_cast<QAbstractScrollArea*>(holder->parentWidget()->parentWidget()))
            holder = holder->parentWidget();
        const QRect place(part.mapTo(holder, QPoint()), part.size());
        EXPECT_TRUE(holder->rect().contains(place))
            << name << " at " << place.bottom() << " of " << holder->height();
    }

    forms::GlobalRecord global_;
    forms::ScreenRegistry registry_;
    forms::House house_;
    CompanyFolder folder_;
    help::HelpShelf help_{global_};
    ScreenDriver driver_;
    int pictures_ = 0;
};

TEST_F(Screens, FitTheScreenWithTheirCommandsInSight) {
    driver_.answerFreely([](const forms::BoxRequest& box) {
        ADD_FAILURE() << box.text.toStdString();
        return forms::BoxAnswer::Ok;
    });
    QStringList names = registry_.names();
    names.sort();
    for (const QString& name : names) {
        SCOPED_TRACE(name.toStdString());
        const auto topic = registry_.helpOn(name);
        const bool about = name == u"frmAbout"_s || name == u"frmHDataPrint"_s;
        EXPECT_TRUE(about || (topic && help::findPage(help_.pages(), topic->file, topic->number)));
        std::unique_ptr<QDialog> form(registry_.create(name, house_, nullptr));
        if (!form) continue;
        driver_.run(*form, [this](QDialog& shown) {
            measure(shown);
            if (auto* add = shown.findChild<QPushButton*>(u"cmdAdd"_s); add && add->isEnabled()) {
                const QSize before = shown.size();
                add->click();
                measure(shown);
                shown.findChild<QPushButton*>(u"cmdCancel"_s)->click();
                EXPECT_EQ(shown.size(), before);
            }
            if (shown.objectName() == u"frmSHaibunjikkouK2"_s) {  // with its panel
                choose(shown, u"DataList1"_s, 0);
                choose(shown, u"DataList2"_s, 0);
                click(shown, u"Command6"_s);
                measure(shown);
            }
            shown.QDialog::done(QDialog::Rejected);
        });
    }
}

/// Enter and Tab take the same way: through everything that may be typed or chosen, then to the update.
TEST_F(Screens, OfRecordsLeadFromTheFirstFieldThroughAllToTheUpdate) {
    driver_.answerFreely([](const forms::BoxRequest&) { return forms::BoxAnswer::Yes; });
    QStringList walked;
    for (const QString& name : registry_.names()) {
        std::unique_ptr<QDialog> form(registry_.create(name, house_, nullptr));
        if (!qobject_cast<forms::RecordForm*>(form.get())) continue;
        SCOPED_TRACE(name.toStdString());
        walked << name;
        driver_.run(*form, [](QDialog& shown) {
            click(shown, u"cmdAdd"_s);
            QSet<QWidget*> open;
            for (QWidget* field : shown.findChildren<QWidget*>()) {
                auto* edit = qobject_cast<QLineEdit*>(field);
                const bool typed = edit && !edit->isReadOnly();
                auto* combo = qobject_cast<widgets::CodeCombo*>(field);
                static const QRegularExpression direct(u"(日|Code|年齢|等級|郵便番号|ｔｅｌ|fax)$"_s);
                EXPECT_TRUE(!typed || edit->accessibleName().contains(direct) !=
                                          edit->testAttribute(Qt::WA_InputMethodEnabled))
                    << edit->accessibleName().toStdString();
                const bool bound = field->objectName().startsWith(u"txtFields"_s) || combo;
                if (bound && field->isEnabled() && (typed || (combo && !combo->isLocked()))) open << field;
            }
            QWidget* at = shown.focusWidget();
            EXPECT_TRUE(open.contains(at)) << "the first field that is entered";
            for (QWidget* first = at; at && !qobject_cast<QPushButton*>(at);) {
                open.remove(at);
                do at = at->nextInFocusChain();
                while (at != first &&
                       !(at->isVisible() && at->isEnabled() && (at->focusPolicy() & Qt::TabFocus)));
                if (at == first) break;
            }
            EXPECT_EQ(at->objectName(), u"cmdUpdate"_s);
            for (QWidget* missed : open)
                ADD_FAILURE() << missed->objectName().toStdString() << " is left out";
            shown.QDialog::done(QDialog::Rejected);
        });
    }
    EXPECT_GE(walked.size(), 21);
}

}  // namespace
