#include "calc/ui_budget_box.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

#include "forms/box.h"
#include "widgets/key_filter.h"
#include "widgets/theme.h"

namespace calc {

using design::Houshiki;
using store::Money;

namespace {

/// The limit of both budgets: 99,999,999,999 yen is still taken.
Money budgetLimit() {
    return Money::fromYen(100'000'000'000);
}

/// The amount in a box or label, in whole yen as it will be shown; none when it is no number. A number beyond
/// the money range counts as the limit.
std::optional<Money> amountOf(const QString& text) {
    try {
        return Money::fromText(store::formatGrouped(Money::fromText(text)));
    } catch (const store::Error& error) {
        if (error.reason() == store::Error::Reason::Overflow) return budgetLimit();
        return std::nullopt;
    }
}

template <typename Control>
Money shownAmount(const Control* control) {
    return amountOf(control->text()).value_or(Money());
}

void keepsItsPlace(QWidget* widget) {
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
}

}  // namespace

BudgetBox::BudgetBox(QWidget* parent) : Card(parent) {
    setObjectName(QStringLiteral("Frame3"));
    keepsItsPlace(this);
    budget_ = moneyBox(QStringLiteral("Text1"));
    poolBudget_ = moneyBox(QStringLiteral("Text2"));
    for (std::size_t i = 0; i < total_.size(); ++i) total_[i] = label(QStringLiteral("Label6_%1").arg(i));
    const std::array<QString, 3> heads{QStringLiteral("金一封"), QStringLiteral("特別加算金"),
                                       QStringLiteral("総額配分予定")};
    for (std::size_t i = 0; i < heads.size(); ++i)
        totalHead_[i] = label(QStringLiteral("Label7_%1").arg(i), heads[i]);
    body()->addLayout(makeGrid());
    changed_ = label(QStringLiteral("Label25"),
                     QStringLiteral("⚠ 計算のあとに入力が変わっています。もう一度計算してください。"));
    widgets::setTone(changed_, widgets::Tone::Warning);
    changed_->setWordWrap(true);
    changed_->hide();
    body()->addWidget(changed_);
}

// ---- The parts

QLabel* BudgetBox::label(const QString& name, const QString& text) {
    auto* made = new QLabel(text, this);
    made->setObjectName(name);
    return made;
}

QLabel* BudgetBox::labelOf(QLineEdit* box, const QString& name, const QString& text,
                           const QString& mnemonic) {
    auto* made = label(name, text + mnemonic);
    made->setBuddy(box);
    box->setAccessibleName(text);
    return made;
}

QLineEdit* BudgetBox::moneyBox(const QString& name) {
    auto* box = new QLineEdit(this);
    box->setObjectName(name);
    box->setAlignment(Qt::AlignRight);
    box->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("99,999,999,999")) +
                         4 * widgets::kGrid);
    widgets::admitOnly(box, QStringLiteral("0123456789"));
    return box;
}

/// The budgets at the left, the totals under one another at the right.
QGridLayout* BudgetBox::makeGrid() {
    auto* individual = label(QStringLiteral("Label8"), QStringLiteral("個人別計算"));
    auto* pool = label(QStringLiteral("Label9"), QStringLiteral("総額配分"));
    auto* all = label(QStringLiteral("Label19"), QStringLiteral("合計"));
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(widgets::kGrid + widgets::kGrid / 2);
    grid->setVerticalSpacing(widgets::kGrid / 2);
    const auto line = [&](int row, int column, QLabel* head, QWidget* amount) {
        grid->addWidget(head, row, column);
        grid->addWidget(amount, row, column + 1);
    };
    line(0, 0, labelOf(budget_, QStringLiteral("Label4"), QStringLiteral("予算総額"), QStringLiteral("(&T)")),
         budget_);
    line(1, 0,
         labelOf(poolBudget_, QStringLiteral("Label5"), QStringLiteral("総額配分予算"),
                 QStringLiteral("(&B)")),
         poolBudget_);
    line(2, 0, totalHead_[2], total_[4]);
    line(0, 3, individual, total_[0]);
    line(1, 3, pool, total_[1]);
    line(2, 3, totalHead_[0], total_[2]);
    line(3, 3, totalHead_[1], total_[3]);
    line(4, 3, all, total_[5]);
    makeNotes(grid);
    grid->setColumnMinimumWidth(2, 2 * widgets::kGrid);
    for (int column : {1, 4}) grid->setColumnStretch(column, 1);
    dress({individual, pool, totalHead_[0], totalHead_[1], totalHead_[2]});
    widgets::setTone(all, widgets::Tone::Heading);
    widgets::setTone(total_[5], widgets::Tone::Title);
    return grid;
}

/// What a payment that is not used says, what is beyond the budget, and the unit.
void BudgetBox::makeNotes(QGridLayout* grid) {
    for (int i = 0; i < 2; ++i) {
        auto* head = label(QStringLiteral("Label23_%1").arg(i),
                           totalHead_[static_cast<std::size_t>(i)]->text() + QStringLiteral("（対象外）"));
        widgets::setTone(head, widgets::Tone::Muted);
        notUsed_[static_cast<std::size_t>(i)] = head;
        grid->addWidget(head, 2 + i, 3);
    }
    overBudget_ = label(QStringLiteral("Label24"), QString());
    widgets::setTone(overBudget_, widgets::Tone::Warning);
    grid->addWidget(overBudget_, 3, 0, 1, 2);
    auto* unit = label(QStringLiteral("Label22"), QStringLiteral("単位: 円"));
    widgets::setTone(unit, widgets::Tone::Muted);
    grid->addWidget(unit, 4, 0);
}

/// Amounts stand at the right, may be copied, and do not jump when a neighbour is hidden.
void BudgetBox::dress(std::initializer_list<QLabel*> heads) {
    for (QLabel* amount : total_) {
        amount->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        amount->setTextInteractionFlags(Qt::TextSelectableByMouse);
        keepsItsPlace(amount);
    }
    for (QLabel* head : heads) {
        widgets::setTone(head, widgets::Tone::Muted);
        keepsItsPlace(head);
    }
}

// ---- What is shown

void BudgetBox::bind(const RunBudget& row, const design::Kijun& kijun) {
    summed_ = kijun.uses;
    const auto uses = [&](Houshiki h) { return kijun.uses[static_cast<std::size_t>(h)]; };
    const bool pool = uses(Houshiki::Sougaku);
    budget_->setText(pool ? store::formatGrouped(row.yosanSougaku) : QStringLiteral("0"));
    poolBudget_->setText(pool ? store::formatGrouped(row.sougakuHaibunYosan) : QStringLiteral("0"));
    for (QLineEdit* box : boxes()) box->setEnabled(pool);
    totalHead_[2]->setText(pool ? QStringLiteral("総額配分予定") : QString());
    total_[4]->setVisible(pool);
    totalHead_[0]->setVisible(uses(Houshiki::Kinippu));
    totalHead_[1]->setVisible(uses(Houshiki::Tokubetsu));
    notUsed_[0]->setVisible(!uses(Houshiki::Kinippu));
    notUsed_[1]->setVisible(!uses(Houshiki::Tokubetsu));
    for (Houshiki typed : {Houshiki::Kinippu, Houshiki::Tokubetsu})
        widgets::setTone(total_[static_cast<std::size_t>(typed)],
                         uses(typed) ? widgets::Tone::Normal : widgets::Tone::Muted);
}

void BudgetBox::showTotals(const RunBudget& row) {
    const std::array<Money, 4> sums{row.kojinbetsuGoukei, row.sougakuGoukei, row.kinIppuuGoukei,
                                    row.tokubetsuKasankinGoukei};
    for (std::size_t i = 0; i < sums.size(); ++i)
        total_[i]->setText(summed_[i] ? store::formatGrouped(sums[i]) : QStringLiteral("0"));
    refreshTotals();
}

RunBudget BudgetBox::shown() const {
    return {shownAmount(budget_),   shownAmount(poolBudget_), shownAmount(total_[0]),
            shownAmount(total_[1]), shownAmount(total_[2]),   shownAmount(total_[3])};
}

void BudgetBox::refreshTotals() {
    const RunTotals totals = calc::refreshTotals(shown());
    total_[4]->setText(store::formatGrouped(totals.haibunYotei));
    total_[5]->setText(store::formatGrouped(totals.soukei));
    for (QLineEdit* box : boxes()) box->setText(store::formatGrouped(shownAmount(box)));
    markOverBudget(totals);
}

/// What was distributed, or is planned, beyond its budget: by colour, a sign and the amount.
void BudgetBox::markOverBudget(const RunTotals& totals) {
    const Money over = shownAmount(total_[1]) - shownAmount(poolBudget_);
    const bool spent = poolBudget_->isEnabled() && over > Money();
    overBudget_->setText(
        spent ? QStringLiteral("⚠ 総額配分が予算を %1円 超えています").arg(store::formatGrouped(over))
              : QString());
    const auto tone = [](bool warned) { return warned ? widgets::Tone::Warning : widgets::Tone::Normal; };
    widgets::setTone(total_[1], tone(spent));
    widgets::setTone(total_[4], tone(totals.haibunYotei < Money()));
}

void BudgetBox::showChange(bool changed) {
    changed_->setVisible(changed);
}

// ---- What is typed

/// What is wrong with the amount in a budget box; empty when it may be stored.
QString BudgetBox::problemOf(const QLineEdit* box) const {
    const std::optional<Money> amount = amountOf(box->text());
    if (!amount) return QStringLiteral("数字以外は許されません。 ");
    if (*amount < Money() || *amount >= budgetLimit())
        return QStringLiteral("0～99,999,999,999円を入力してください。");
    if (shownAmount(budget_) >= shownAmount(poolBudget_)) return {};
    return box == budget_ ? QStringLiteral("総額配分予算以上を入力してください。")
                          : QStringLiteral("予算総額以下を入力してください。");
}

bool BudgetBox::admits(QLineEdit* box) {
    const bool wasEmpty = box->text().trimmed().isEmpty();
    if (wasEmpty) box->setText(QStringLiteral("0"));
    const QString problem = problemOf(box);
    // An emptied box may always be left: the other one is refused when it is left in its turn.
    if (problem.isEmpty() || wasEmpty) return true;
    forms::tell(window(), problem, QStringLiteral("入力エラー"), forms::BoxIcon::Critical);
    return false;
}

std::optional<BudgetBox::Budgets> BudgetBox::budgets() const {
    if (!budget_->isEnabled()) return std::nullopt;
    if (!problemOf(budget_).isEmpty() || !problemOf(poolBudget_).isEmpty()) return std::nullopt;
    return Budgets{shownAmount(budget_), poolBudget()};
}

Money BudgetBox::poolBudget() const {
    return shownAmount(poolBudget_);
}

}  // namespace calc
