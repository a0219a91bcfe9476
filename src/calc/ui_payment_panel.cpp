#include "calc/ui_payment_panel.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

#include "forms/box.h"
#include "store/error.h"
#include "store/money.h"
#include "widgets/key_filter.h"
#include "widgets/theme.h"

namespace calc {
namespace {

std::optional<double> numberOf(const QString& text) {
    try {
        return coefficientOfText(text);
    } catch (const store::Error&) {
        return std::nullopt;
    }
}

}  // namespace

PaymentPanel::PaymentPanel(QWidget* parent) : Card(parent) {
    setObjectName(QStringLiteral("Frame4"));
    auto* column = body();
    auto* title = label(QStringLiteral("Label17"), QStringLiteral("【支給係数シミュレーション】"));
    widgets::setTone(title, widgets::Tone::Heading);
    column->addWidget(title);
    auto* heads = label(QStringLiteral("Label10"), QStringLiteral("登録値　【係数】　修正値"));
    widgets::setTone(heads, widgets::Tone::Muted);

    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(widgets::kGrid + widgets::kGrid / 2);
    grid->setVerticalSpacing(widgets::kGrid / 2);
    grid->setColumnStretch(1, 1);
    grid->addWidget(heads, 0, 0, 1, 3, Qt::AlignRight);
    for (int i = 0; i < PaymentSimulation::kGrades; ++i) {
        const QString n = QString::number(i);
        Row& row = rows_[static_cast<std::size_t>(i)];
        row = {label(QStringLiteral("Label12_") + n), label(QStringLiteral("Label13_") + n),
               box(QStringLiteral("Text3_") + n, QStringLiteral("修正する支給係数 %1").arg(i + 1)),
               label(QStringLiteral("Label16_") + n)};
        row.hyoukaCode->hide();  // the grade's code travels with the row, for the store step
        row.registered->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        grid->addWidget(row.hyouka, i + 1, 0);
        grid->addWidget(row.registered, i + 1, 1);
        grid->addWidget(row.corrected, i + 1, 2);
    }
    uniformHead_ = label(QStringLiteral("Label11"), QStringLiteral(" 評価 なし"));
    uniformRegistered_ = label(QStringLiteral("Label14"));
    uniformRegistered_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    uniformCorrected_ = box(QStringLiteral("Text4"), QStringLiteral("修正する支給係数"));
    constexpr int kUniformRow = PaymentSimulation::kGrades + 1;
    grid->addWidget(uniformHead_, kUniformRow, 0);
    grid->addWidget(uniformRegistered_, kUniformRow, 1);
    grid->addWidget(uniformCorrected_, kUniformRow, 2);
    column->addLayout(grid);
    auto* hint = label(QStringLiteral("Label15"), QStringLiteral("係数は 0.000～999.999 を入力してください"));
    widgets::setTone(hint, widgets::Tone::Muted);
    hint->setWordWrap(true);
    column->addWidget(hint);
    column->addSpacing(widgets::kGrid);
    column->addLayout(makeEffect());
    column->addStretch();
    clearGrades();
    uniformHead_->hide();
    uniformCorrected_->hide();
}

QLabel* PaymentPanel::label(const QString& name, const QString& text) {
    auto* made = new QLabel(text, this);
    made->setObjectName(name);
    return made;
}

QLineEdit* PaymentPanel::box(const QString& name, const QString& accessibleName) {
    auto* made = new QLineEdit(this);
    made->setObjectName(name);
    made->setAccessibleName(accessibleName);
    made->setAlignment(Qt::AlignRight);
    made->setMaximumWidth(fontMetrics().horizontalAdvance(QStringLiteral("0,000.0000")) + 4 * widgets::kGrid);
    widgets::admitOnly(made, QStringLiteral("0123456789."));
    connect(made, &QLineEdit::textChanged, this, &PaymentPanel::edited);
    return made;
}

/// Three amounts under one another; none of them may move its neighbours as it grows.
QLayout* PaymentPanel::makeEffect() {
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(widgets::kGrid + widgets::kGrid / 2);
    grid->setVerticalSpacing(widgets::kGrid / 2);
    auto* title = label(QStringLiteral("Label23"), QStringLiteral("個人別計算の合計（円）"));
    widgets::setTone(title, widgets::Tone::Heading);
    grid->addWidget(title, 0, 0, 1, 2);
    const int room = fontMetrics().horizontalAdvance(QStringLiteral("-999,999,999,999,999"));
    int row = 0;
    for (const QString& head :
         {QStringLiteral("登録値での合計"), QStringLiteral("補正後の合計"), QStringLiteral("差額")}) {
        auto* amount = effect_[static_cast<std::size_t>(row)] = label(QStringLiteral("Label24_%1").arg(row));
        amount->setMinimumWidth(room);
        amount->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        amount->setTextInteractionFlags(Qt::TextSelectableByMouse);
        auto* name = label(QStringLiteral("Label25_%1").arg(row), head);
        widgets::setTone(name, widgets::Tone::Muted);
        ++row;
        grid->addWidget(name, row, 0);
        grid->addWidget(amount, row, 1);
    }
    effectNote_ = label(QStringLiteral("Label26"));
    effectNote_->setWordWrap(true);
    effectNote_->setMinimumHeight(2 * fontMetrics().lineSpacing());
    effectNote_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    widgets::setTone(effectNote_, widgets::Tone::Muted);
    grid->addWidget(effectNote_, row + 1, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    return grid;
}

void PaymentPanel::showEffect(const PaymentEffect& effect) {
    QStringList texts{QStringLiteral("—"), QStringLiteral("—"), QStringLiteral("—")};
    if (const auto& totals = effect.totals) {
        texts = {store::formatGrouped(totals->registered), store::formatGrouped(totals->corrected),
                 store::formatGrouped(totals->difference)};
        if (totals->difference > store::Money()) texts[2].prepend(u'+');
    }
    for (std::size_t i = 0; i < effect_.size(); ++i) effect_[i]->setText(texts[static_cast<int>(i)]);
    effectNote_->setText(
        effect.totals
            ? QStringLiteral("「登録値での合計」は登録値のままの金額です。［計算］を押すまで保存しません。")
            : effect.reason);
}

void PaymentPanel::Row::showUsed() {
    for (QLabel* text : {hyouka, registered}) text->setVisible(!text->text().isEmpty());
    corrected->setVisible(!corrected->text().isEmpty());
}

bool PaymentPanel::enter() {
    for (QLineEdit* box : boxes()) {
        if (!box->isVisible()) continue;
        box->setFocus(Qt::TabFocusReason);
        return true;
    }
    return false;
}

void PaymentPanel::clearGrades() {
    for (Row& row : rows_) {
        for (QLabel* text : {row.hyouka, row.registered, row.hyoukaCode}) text->clear();
        row.corrected->clear();
        row.showUsed();
    }
}

void PaymentPanel::showUniform(const UniformPanel& uniform) {
    clearGrades();
    uniformRegistered_->setText(uniform.registered);
    uniformCorrected_->setText(uniform.corrected);
    uniformHead_->show();
    uniformCorrected_->show();
}

void PaymentPanel::showGrades(const std::vector<PanelGrade>& grades) {
    uniformRegistered_->clear();
    uniformHead_->hide();
    uniformCorrected_->hide();
    for (std::size_t i = 0; i < grades.size() && i < rows_.size(); ++i) {
        rows_[i].hyouka->setText(grades[i].hyouka);
        rows_[i].registered->setText(grades[i].registered);
        rows_[i].corrected->setText(grades[i].corrected);
        rows_[i].hyoukaCode->setText(grades[i].hyoukaCode);
        rows_[i].showUsed();
    }
}

PaymentSimulation PaymentPanel::simulation(bool open, const QString& hyougoType) const {
    using Mode = PaymentSimulation::Mode;
    PaymentSimulation texts;
    if (open && !uniformCorrected_->isHidden())
        texts.mode = Mode::Uniform;
    else if (open && !rows_.front().corrected->isHidden())
        texts.mode = Mode::Grades;
    texts.hyougoType = hyougoType;
    texts.uniformCorrected = uniformCorrected_->text();
    texts.uniformRegistered = uniformRegistered_->text();
    for (std::size_t i = 0; i < rows_.size(); ++i)
        texts.grades[i] = {rows_[i].hyouka->text(), rows_[i].registered->text(), rows_[i].corrected->text(),
                           rows_[i].hyoukaCode->text()};
    return texts;
}

std::vector<QLineEdit*> PaymentPanel::boxes() const {
    std::vector<QLineEdit*> all;
    for (const Row& row : rows_) all.push_back(row.corrected);
    all.push_back(uniformCorrected_);
    return all;
}

bool PaymentPanel::check(QLineEdit* box) {
    if (box->text().trimmed().isEmpty()) box->setText(QStringLiteral("1.000"));
    const std::optional<double> number = numberOf(box->text());
    const bool inRange = number && *number >= 0 && *number <= kLargestCoefficient;
    if (inRange) {
        box->setText(store::formatCoefficient(*number));
        return true;
    }
    forms::tell(window(),
                number ? QStringLiteral("0.000～999.999を入力してください。")
                       : QStringLiteral("数字以外は許されません。 "),
                QStringLiteral("入力エラー"), forms::BoxIcon::Critical);
    return false;
}

}  // namespace calc
