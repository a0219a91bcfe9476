#include "personnel/frmJinjiCheck.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>

#include "forms/guard.h"
#include "personnel/person_rules.h"
#include "schema/catalog.h"
#include "widgets/theme.h"

namespace personnel {
namespace {

using namespace Qt::StringLiterals;

namespace t = schema::tables::入力可不可テーブル;

const QString& columnAt(int index) {
    return schema::tableNamed(QString::fromUtf16(t::kName)).columns[std::size_t(index)].name;
}

QString captionAt(int index) {
    return index == t::tel ? u"ｔｅｌ"_s : index == t::fax ? u"ｆａｘ"_s : columnAt(index);
}

}  // namespace

frmJinjiCheck::frmJinjiCheck(forms::House& house, QWidget* parent)
    : SingleRowForm(u"frmJinjiCheck"_s, u"入力項目の設定"_s, QString::fromUtf16(t::kName), house, parent) {
    static_assert(kChecks == t::kColumns);
    for (int i = 0; i < kChecks; ++i)
        check1_[std::size_t(i)] = make<QCheckBox>(u"Check1_%1"_s.arg(i), captionAt(i));
    forms::guarded(this, [this] { nameAttributes(); });
    for (int i = 0; i < kChecks; ++i) {
        const store::Value flag = stored(columnAt(i));
        check1_[std::size_t(i)]->setChecked(flag.isNull() || flag.toBool());
    }
    arrange(u"次の項目は、チェックマークをつけると入力できます。"_s, arrangeFrames());
    setTabOrder(check1_.back(), findChild<QWidget*>(u"Command1"_s));
    check1_.front()->setFocus();
}

/// A switched-off attribute must not stay required: its flag is taken back at once.
void frmJinjiCheck::nameAttributes() {
    const EntryItems items = EntryItems::read(cn());
    rewrite([&](store::RowEdit& row) {
        for (int i = t::自由1; i <= t::自由5; ++i) {
            const bool off = items.caption(columnAt(i)) == u"未設定"_s;
            check1_[std::size_t(i)]->setEnabled(!off);
            if (off)
                row.set(i, false);
            else
                check1_[std::size_t(i)]->setText(widgets::asCaption(items.caption(columnAt(i))));
        }
    });
}

QLayout* frmJinjiCheck::arrangeFrames() {
    auto* grid = new QGridLayout;
    grid->setSpacing(2 * widgets::kGrid);
    grid->addWidget(frame(u"履歴書テーブル"_s, t::婚姻区分, t::自由5 - t::婚姻区分 + 1, 3), 0, 0, 1, 3);
    grid->addWidget(frame(u"異動テーブル"_s, t::等級, t::コメント - t::等級 + 1, 1), 1, 0);
    grid->addWidget(frame(u"家族テーブル"_s, t::フリガナ, t::障害 - t::フリガナ + 1, 2), 1, 1);
    grid->addWidget(frame(u"資格・免許テーブル"_s, t::取得年月日, 1, 1), 1, 2);
    return grid;
}

QWidget* frmJinjiCheck::frame(const QString& title, int first, int count, int columns) {
    auto* box = new QGroupBox(title, this);
    QFont bold = box->font();
    bold.setBold(true);
    auto* grid = new QGridLayout(box);
    grid->setHorizontalSpacing(3 * widgets::kGrid);
    const int lines = (count + columns - 1) / columns;
    for (int i = 0; i < count; ++i) grid->addWidget(check1_[std::size_t(first + i)], i % lines, i / lines);
    grid->setRowStretch(lines, 1);
    const int titleWidth = QFontMetrics(bold).horizontalAdvance(title) + 3 * widgets::kGrid;
    grid->addItem(new QSpacerItem(titleWidth, 0), lines, 0, 1, columns);
    return box;
}

void frmJinjiCheck::fill(store::RowEdit& row) {
    for (int i = 0; i < kChecks; ++i) row.set(i, check1_[std::size_t(i)]->isChecked());
}

}  // namespace personnel
