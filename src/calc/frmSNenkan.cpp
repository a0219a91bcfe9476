#include "calc/frmSNenkan.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <algorithm>

#include "calc/changed_inputs.h"
#include "calc/pay_charts.h"
#include "calc/ui_result_output.h"
#include "forms/box.h"
#include "forms/global_record.h"
#include "forms/guard.h"
#include "reports/frmChart.h"
#include "reports/frmReport.h"
#include "reports/ui_list_title.h"
#include "reports/ui_sent_sheet.h"
#include "reports/workbook.h"
#include "store/date_text.h"
#include "widgets/key_filter.h"
#include "widgets/layout.h"
#include "widgets/theme.h"

namespace calc {
namespace {

const QString kTitle = QStringLiteral("年間支給額");
const QString kListTitle = QStringLiteral("年間賞与支給額");

/// The form of the list's headings.
QString paddedDate(QDate date) {
    return date.toString(QStringLiteral("yyyy/MM/dd"));
}

}  // namespace

frmSNenkan::frmSNenkan(forms::House& house, const reports::SheetFolder& sheets, QWidget* parent)
    : Form(QStringLiteral("frmSNenkan"), kTitle, parent), house_(house), sheets_(sheets) {
    makeControls();
    forms::guarded(this, [this] { Form_Load(); });
}

// ---- The screen's parts

void frmSNenkan::makeControls() {
    auto* title = make<QLabel>(QStringLiteral("Label5"), kTitle);
    auto* guidance =
        make<QLabel>(QStringLiteral("Label4"), QStringLiteral("基準日を指定してください（複数可）。"));
    auto* dates = makeDates();
    auto* buttons = makeButtons();
    sent_ = new reports::SentSheet(this);

    auto* column = widgets::columnOf(this);
    column->addLayout(widgets::headerBlock(title, guidance));
    column->addWidget(dates);
    column->addStretch();
    column->addWidget(sent_);
    column->addLayout(buttons);
    setMinimumSize(widgets::twips(7770), widgets::twips(4200));
}

QWidget* frmSNenkan::makeDates() {
    auto* card = new widgets::Card(this);
    auto* grid = widgets::fieldGrid();
    for (std::size_t n = 0; n < kNenkanDates; ++n) {
        const int number = static_cast<int>(n) + 1;
        auto* combo = make<QComboBox>(QStringLiteral("DataCombo%1").arg(number));
        combo->setEditable(true);
        combo->setInsertPolicy(QComboBox::NoInsert);
        combo->setCompleter(nullptr);  // a typed text stays as it is typed
        widgets::typeDirectly(combo->lineEdit());
        combo->lineEdit()->setPlaceholderText(QStringLiteral("指定しない"));
        combo_[n] = combo;
        widgets::addField(
            grid,
            labelFor(QStringLiteral("Label1_%1").arg(n), QStringLiteral("基準日 %1(&%1)").arg(number), combo),
            combo);
        connect(combo, &QComboBox::editTextChanged, this, [this](const QString& text) {
            if (text.isEmpty()) Text入力();
        });
        for (QObject* part : std::initializer_list<QObject*>{combo->lineEdit(), combo->view()->viewport()})
            part->installEventFilter(this);
    }
    card->body()->addLayout(grid);
    return card;
}

QLayout* frmSNenkan::makeButtons() {
    auto* redo = make<QPushButton>(QStringLiteral("Command6"), QStringLiteral("やり直し"));
    auto* list = make<QPushButton>(QStringLiteral("Command4"), QStringLiteral("一覧表"));
    auto* charts = make<QPushButton>(QStringLiteral("Command7"), QStringLiteral("グラフ(&G)"));
    auto* sheet = make<QPushButton>(QStringLiteral("Command5"), QStringLiteral("Excelにデータを送る"));
    auto* close = make<QPushButton>(QStringLiteral("Command2"), QStringLiteral("閉じる(&Ｃ)"));
    auto* help = make<QPushButton>(QStringLiteral("Command3"), QStringLiteral("ヘルプ(&H)"));
    widgets::setPrimary(list);
    setOutput(list, Output::List);
    setOutput(sheet, Output::Excel);
    setCancelButton(close);
    connect(redo, &QPushButton::clicked, this, &frmSNenkan::Command6_Click);
    connect(list, &QPushButton::clicked, this, &frmSNenkan::Command4_Click);
    connect(sheet, &QPushButton::clicked, this, &frmSNenkan::Command5_Click);
    connect(charts, &QPushButton::clicked, this, &frmSNenkan::Command7_Click);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(help, &QPushButton::clicked, this, [this] {
        if (house_.help) house_.help(objectName());
    });
    for (QComboBox* combo : combo_)
        validateOnLeave(combo->lineEdit(), [this, combo] { return kijunbi_check(combo); },
                        {close, help, redo});
    return widgets::buttonRow({help, redo}, {close, sheet, charts, list});
}

void frmSNenkan::Form_Load() {
    choices_ = nenkanChoices(*house_.global.cn_main);
    QStringList texts;
    for (QDate date : choices_) texts << store::formatDate(date);
    for (QComboBox* combo : combo_) {
        const QSignalBlocker quiet(combo);
        combo->addItems(texts);
        combo->setCurrentIndex(-1);
    }
    combo_.front()->setFocus();
}

// ---- Choosing dates

void frmSNenkan::Text入力() {
    const auto empty = std::find_if(combo_.begin(), combo_.end(),
                                    [](const QComboBox* combo) { return combo->currentText().isEmpty(); });
    if (empty != combo_.end()) (*empty)->setFocus();
}

QDate frmSNenkan::boundDate(const QComboBox* combo) const {
    const auto date = store::parseDate(combo->currentText());
    return date && std::find(choices_.begin(), choices_.end(), *date) != choices_.end() ? *date : QDate();
}

bool frmSNenkan::kijunbi_check(QComboBox* combo) {
    const QDate bound = boundDate(combo);
    const bool twice = bound.isValid() && std::any_of(combo_.begin(), combo_.end(), [&](QComboBox* other) {
                           return other != combo && boundDate(other) == bound;
                       });
    if (!twice) return true;
    forms::tell(this, QStringLiteral("基準日が重複しています。"), QStringLiteral("入力エラー"),
                forms::BoxIcon::Critical);
    return false;
}

/// A click with the mouse is judged once the combo has dealt with it.
bool frmSNenkan::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonRelease)
        for (QComboBox* combo : combo_) {
            const bool list = watched == combo->view()->viewport();
            if (!list && watched != combo->lineEdit()) continue;
            QMetaObject::invokeMethod(
                this, [this, combo, list] { DataCombo_Click(combo, list); }, Qt::QueuedConnection);
        }
    return Form::eventFilter(watched, event);
}

/// Dates are filled in from the first combo on: a pick from the list goes on to the next empty one, a click
/// into an empty one to the first. A filled one may be clicked into and changed.
void frmSNenkan::DataCombo_Click(QComboBox* combo, bool picked) {
    if (combo->view()->isVisible() || combo->currentText().isEmpty() == picked) return;
    if (!picked || passesLeaveCheck()) Text入力();
}

void frmSNenkan::Command6_Click() {
    for (QComboBox* combo : combo_) {
        combo->setCurrentIndex(-1);
        combo->clearEditText();
    }
    Text入力();
    sent_->hide();
}

// ---- Results

bool frmSNenkan::requireDates() {
    if (std::all_of(combo_.begin(), combo_.end(),
                    [](const QComboBox* combo) { return combo->currentText().isEmpty(); })) {
        forms::tell(this, QStringLiteral("１つ以上の基準日を指定してください。"), QStringLiteral("未指定"),
                    forms::BoxIcon::Critical);
        combo_.front()->setFocus();
        return false;
    }
    const auto refused = std::find_if(combo_.begin(), combo_.end(),
                                      [this](QComboBox* combo) { return !kijunbi_check(combo); });
    if (refused != combo_.end()) (*refused)->setFocus();
    return refused == combo_.end();
}

NenkanDates frmSNenkan::dates() const {
    NenkanDates dates;
    std::transform(combo_.begin(), combo_.end(), dates.begin(),
                   [this](const QComboBox* combo) { return boundDate(combo); });
    return dates;
}

NenkanHeads frmSNenkan::heads(QString (*format)(QDate), const QString& unused) const {
    NenkanHeads heads;
    std::transform(combo_.begin(), combo_.end(), heads.begin(), [&](const QComboBox* combo) {
        const QString text = combo->currentText();
        const auto date = store::parseDate(text);
        return text.isEmpty() ? unused : date ? format(*date) : text;
    });
    return heads;
}

reports::ListTitle frmSNenkan::titleOfYear() const {
    reports::ListTitle title = reports::titleOfCompany(house_.global, kTitle);
    for (const QDate date : dates())
        if (date.isValid()) title.kijunbi.push_back(date);
    std::sort(title.kijunbi.begin(), title.kijunbi.end());
    const QStringList changed = changedRuns(*house_.global.cn_main, title.kijunbi);
    if (!changed.isEmpty()) {
        const QString others =
            changed.size() > 1 ? QStringLiteral(" ほか%1件").arg(changed.size() - 1) : QString();
        title.remark = kInputsChanged + QStringLiteral("（%1%2）").arg(changed.front(), others);
    }
    return title;
}

void frmSNenkan::Command4_Click() {
    if (!requireDates()) return;
    forms::guarded(this, [this] {
        setHourglass();
        const auto rows = nenkanRows(*house_.global.cn_main, dates());
        auto report = amountReport({QStringLiteral("年間賞与"),
                                    kListTitle,
                                    {},
                                    nenkanColumns(),
                                    nenkanHeadings(heads(paddedDate, {}))},
                                   rows);
        auto* preview = new reports::frmReport(std::move(report), titleOfYear(), this);
        preview->offerCharts([this] { return chartsOfYear(*house_.global.cn_main, dates()); });
        setDefaultPointer();
        showChild(preview);
    });
}

void frmSNenkan::Command5_Click() {
    if (!requireDates()) return;
    forms::guarded(this, [this] {
        setHourglass();
        const auto rows = nenkanRows(*house_.global.cn_main, dates());
        const auto sheet = nenkanSheet(heads(store::formatLongDate, QStringLiteral("なし")), rows);
        const QString path = sheets_.send(sheet, titleOfYear());
        setDefaultPointer();
        sent_->tell(path);
    });
}

void frmSNenkan::Command7_Click() {
    if (!requireDates()) return;
    forms::guarded(this, [this] {
        setHourglass();
        QStringList chosen;
        for (const QString& head : heads(store::formatDate, {}))
            if (!head.isEmpty()) chosen << head;
        auto* charts =
            new reports::frmChart(chartsOfYear(*house_.global.cn_main, dates()),
                                  QStringLiteral("%1　%2").arg(kListTitle, chosen.join(u'、')), this);
        setDefaultPointer();
        showChild(charts);
    });
}

}  // namespace calc
