#include "prep/frmSTaisyousya.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QSortFilterProxyModel>
#include <QVBoxLayout>
#include <map>

#include "design/criteria.h"
#include "design/ui_criterion_picker.h"
#include "forms/box.h"
#include "forms/global_record.h"
#include "forms/guard.h"
#include "store/date_text.h"
#include "widgets/layout.h"
#include "widgets/table.h"
#include "widgets/theme.h"

namespace prep {
namespace {

enum Column { Code, Shimei, Syozoku, Yakusyoku, Toukyuu, Now, New };

const QString kTitle = QStringLiteral("対象者と配分基準の対応");
const QString kUnassigned = QStringLiteral("未割り当て");

QString key(const Assignment& assignment) {
    return assignment.kubun + u'/' + assignment.kijun;
}

/// What goes with the rows of a person, in words.
QString told(const Entered& entered) {
    QStringList kinds;
    if (entered.amounts) kinds << QStringLiteral("支給額");
    if (entered.baseAmounts) kinds << QStringLiteral("基礎額");
    if (entered.coefficients) kinds << QStringLiteral("係数");
    if (entered.grade) kinds << QStringLiteral("評価");
    return kinds.join(u'、');
}

}  // namespace

/// The search text against code, name, place and criterion, and the choice which people to show.
class frmSTaisyousya::Filter : public QSortFilterProxyModel {
  public:
    enum Show { All, Unassigned, Changed, Left };
    explicit Filter(frmSTaisyousya* form) : QSortFilterProxyModel(form), form_(form) {
        setSortRole(widgets::RowsModel::SortRole);
    }
    void set(const QString& words, Show show) {
        words_ = words.split(u' ', Qt::SkipEmptyParts);
        show_ = show;
        invalidateFilter();
    }

  protected:
    bool filterAcceptsRow(int row, const QModelIndex&) const override {
        if (show_ == Unassigned && !form_->future(row).none()) return false;
        if (show_ == Changed && !form_->changed(row)) return false;
        if (show_ == Left && !form_->people_[static_cast<std::size_t>(row)].hasLeft) return false;
        return std::all_of(words_.begin(), words_.end(), [&](const QString& word) {
            for (int column = Code; column <= New; ++column)
                if (form_->cell(row, column).contains(word, Qt::CaseInsensitive)) return true;
            return false;
        });
    }

  private:
    frmSTaisyousya* form_;
    QStringList words_;
    Show show_ = All;
};

frmSTaisyousya::frmSTaisyousya(forms::House& house, QWidget* parent)
    : Form(QStringLiteral("frmSTaisyousya"), QStringLiteral("対象者⇔配分基準の対応"), parent), house_(house) {
    makeControls();
    connectEvents();
    forms::guarded(this, [this] { Form_Load(); });
}

// ---- The screen's parts

void frmSTaisyousya::makeControls() {
    auto* title = make<QLabel>(QStringLiteral("Label3"),
                               QStringLiteral("%1　基準日 %2").arg(kTitle, house_.global.kijunbi));
    auto* guidance = make<QLabel>(QStringLiteral("Label4"),
                                  QStringLiteral("社員を選び、右で配分基準を指定して［割り当てる］を押してく"
                                                 "ださい。［登録］を押すまで保存されません。"));
    auto* list = makeList();
    auto* choice = makeChoice();
    auto* help = make<QPushButton>(QStringLiteral("Command4"), QStringLiteral("ヘルプ(&H)"));
    close_ = make<QPushButton>(QStringLiteral("Command5"), QStringLiteral("閉じる(&C)"));
    save_ = make<QPushButton>(QStringLiteral("Command3"), QStringLiteral("登録(&S)"));
    widgets::setPrimary(save_);
    setCancelButton(close_);
    connect(help, &QPushButton::clicked, this, [this] {
        if (house_.help) house_.help(objectName());
    });

    auto* column = widgets::columnOf(this);
    column->addLayout(widgets::headerBlock(title, guidance));
    auto* body = new QHBoxLayout;
    body->setSpacing(2 * widgets::kGrid);
    body->addWidget(list, 1);
    body->addWidget(choice);
    column->addLayout(body, 1);
    column->addLayout(widgets::buttonRow({help}, {close_, save_}));
    setMinimumSize(widgets::twips(14400), widgets::twips(8040));
    // Wide enough for both columns of criteria where the screen allows it.
    resize(QSize(1240, 680).boundedTo(screen()->availableSize() * 9 / 10));
    tabOrder();
}

QWidget* frmSTaisyousya::makeList() {
    auto* holder = new QWidget(this);
    search_ = make<QLineEdit>(QStringLiteral("Text1"));
    search_->setPlaceholderText(QStringLiteral("コード・氏名・所属・役職・配分基準"));
    search_->setClearButtonEnabled(true);
    show_ = make<QComboBox>(QStringLiteral("Combo1"));
    show_->addItems({QStringLiteral("全員"), kUnassigned, QStringLiteral("変更した社員"),
                     QStringLiteral("退職した社員")});
    show_->setAccessibleName(QStringLiteral("表示する社員"));
    unassigned_ = make<QLabel>(QStringLiteral("Label5"));
    counts_ = make<QLabel>(QStringLiteral("Label8"));
    widgets::setTone(counts_, widgets::Tone::Muted);

    table_ = make<widgets::Table>(QStringLiteral("DataGrid1"));
    model_ = new widgets::RowsModel({{QStringLiteral("社員Code")},
                                     {QStringLiteral("氏名")},
                                     {QStringLiteral("所属")},
                                     {QStringLiteral("役職")},
                                     {QStringLiteral("等級"), true},
                                     {QStringLiteral("現在の配分基準")},
                                     {QStringLiteral("新しい配分基準")}},
                                    this);
    filter_ = new Filter(this);
    filter_->setSourceModel(model_);
    table_->setModel(filter_);
    table_->setSortingEnabled(true);
    table_->sortByColumn(Code, Qt::AscendingOrder);
    table_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    table_->setAccessibleName(QStringLiteral("対象者の一覧"));
    table_->setPlaceholder(
        QStringLiteral("表示する社員はいません。検索の文字と表示の条件を確かめてください。"));

    auto* find = new QHBoxLayout;
    find->addWidget(labelFor(QStringLiteral("Label6"), QStringLiteral("検索(&F)"), search_));
    find->addWidget(search_, 1);
    find->addWidget(show_);
    auto* column = new QVBoxLayout(holder);
    column->setContentsMargins(0, 0, 0, 0);
    column->addLayout(find);
    column->addWidget(table_, 1);
    auto* counts = new QHBoxLayout;
    counts->setSpacing(3 * widgets::kGrid);
    counts->addWidget(unassigned_);
    counts->addWidget(counts_, 1);
    column->addLayout(counts);
    return holder;
}

QWidget* frmSTaisyousya::makeChoice() {
    auto* card = new widgets::Card(this);
    picker_ = new design::CriterionPicker(house_, card);
    picker_->setStacked();
    selected_ = make<QLabel>(QStringLiteral("Label7"));
    assign_ = make<QPushButton>(QStringLiteral("Command1"), QStringLiteral("割り当てる(&A)"));
    release_ = make<QPushButton>(QStringLiteral("Command2"), QStringLiteral("割り当てを外す(&R)"));
    widgets::setDanger(release_);
    auto* column = card->body();
    column->addWidget(picker_, 1);
    column->addWidget(selected_);
    column->addWidget(assign_);
    column->addSpacing(2 * widgets::kGrid);
    column->addWidget(release_);
    return card;
}

void frmSTaisyousya::tabOrder() {
    widgets::tabOrder({search_, show_, table_, picker_->kubunList(), picker_->kijunList(), assign_, release_,
                       save_, close_});
}

void frmSTaisyousya::connectEvents() {
    connect(search_, &QLineEdit::textChanged, this, &frmSTaisyousya::refilter);
    connect(show_, &QComboBox::currentIndexChanged, this, &frmSTaisyousya::refilter);
    connect(table_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &frmSTaisyousya::showCounts);
    connect(picker_, &design::CriterionPicker::kubunChosen, this, [this] {
        forms::guarded(this, [this] { picker_->loadKijun(); });
        showCounts();
    });
    connect(picker_, &design::CriterionPicker::kijunChosen, this, [this] {
        picker_->refuseEmptyKijun();
        showCounts();
    });
    connect(assign_, &QPushButton::clicked, this, &frmSTaisyousya::Command1_Click);
    connect(release_, &QPushButton::clicked, this, &frmSTaisyousya::Command2_Click);
    connect(save_, &QPushButton::clicked, this, &frmSTaisyousya::Command3_Click);
    connect(close_, &QPushButton::clicked, this, &frmSTaisyousya::reject);
}

void frmSTaisyousya::Form_Load() {
    store::Connection& cn = *house_.global.cn_main;
    names_.clear();
    for (const design::Kubun& kubun : design::kubunList(cn))
        for (const design::Kijun& kijun : design::kijunList(cn, kubun.code))
            names_.insert(key({kubun.code, kijun.code}), kubun.name + u'／' + kijun.name);
    people_ = assignees(cn, store::requireDate(house_.global.kijunbi));
    planned_.clear();
    model_->setRows(
        static_cast<int>(people_.size()), [this](int row, int column) { return cell(row, column); },
        [this](int row, int column) { return sortKey(row, column); });
    picker_->load();
    refilter();
    search_->setFocus();
}

// ---- What the table shows

const Assignment& frmSTaisyousya::future(int row) const {
    const auto planned = planned_.constFind(row);
    return planned == planned_.cend() ? people_[static_cast<std::size_t>(row)].assignment : *planned;
}

bool frmSTaisyousya::changed(int row) const {
    return future(row) != people_[static_cast<std::size_t>(row)].assignment;
}

QString frmSTaisyousya::nameOf(const Assignment& assignment) const {
    if (assignment.none()) return kUnassigned;
    return names_.value(key(assignment), QStringLiteral("表示しない配分基準（%1）").arg(key(assignment)));
}

QString frmSTaisyousya::nameIn(int row) const {
    const Assignee& person = people_[static_cast<std::size_t>(row)];
    return person.hasLeft ? person.shimei + QStringLiteral("（退職）") : person.shimei;
}

QString frmSTaisyousya::cell(int row, int column) const {
    const Assignee& person = people_[static_cast<std::size_t>(row)];
    switch (column) {
        case Code:
            return person.syainCode;
        case Shimei:
            return nameIn(row);
        case Syozoku:
            return person.syozoku;
        case Yakusyoku:
            return person.yakusyoku;
        case Toukyuu:
            return person.toukyuu;
        case Now:
            return nameOf(person.assignment);
        default:
            return changed(row) ? nameOf(future(row)) : QString();
    }
}

QVariant frmSTaisyousya::sortKey(int row, int column) const {
    if (column == Code || column == Toukyuu) return cell(row, column).toInt();
    return cell(row, column);
}

void frmSTaisyousya::refilter() {
    filter_->set(search_->text(), static_cast<Filter::Show>(show_->currentIndex()));
    showCounts();
}

void frmSTaisyousya::showCounts() {
    int unassigned = 0;
    for (int row = 0; row < static_cast<int>(people_.size()); ++row) unassigned += future(row).none() ? 1 : 0;
    const qsizetype chosen = table_->selectionModel()->selectedRows().size();
    const auto changes = changedRows().size();
    unassigned_->setText(QStringLiteral("未割り当て %1人").arg(unassigned));
    counts_->setText(QStringLiteral("対象者 %1人　変更 %2人").arg(people_.size()).arg(changes));
    widgets::setTone(unassigned_, unassigned > 0 ? widgets::Tone::Warning : widgets::Tone::Normal);
    selected_->setText(chosen > 0 ? QStringLiteral("%1人を選んでいます").arg(chosen)
                                  : QStringLiteral("社員を選んでいません"));
    assign_->setEnabled(chosen > 0 && !picker_->kijunList()->boundText().isEmpty());
    release_->setEnabled(chosen > 0);
    save_->setEnabled(changes > 0);
}

std::vector<int> frmSTaisyousya::changedRows() const {
    std::vector<int> rows;
    for (auto it = planned_.cbegin(); it != planned_.cend(); ++it)
        if (changed(it.key())) rows.push_back(it.key());
    std::sort(rows.begin(), rows.end());
    return rows;
}

std::vector<int> frmSTaisyousya::selectedRows() const {
    std::vector<int> rows;
    for (const QModelIndex& index : table_->selectionModel()->selectedRows())
        rows.push_back(filter_->mapToSource(index).row());
    return rows;
}

// ---- Assigning

void frmSTaisyousya::plan(const Assignment& assignment) {
    for (int row : selectedRows()) planned_.insert(row, assignment);
    model_->refresh();
    refilter();
}

void frmSTaisyousya::Command1_Click() {
    plan({picker_->kubunList()->boundText(), picker_->kijunList()->boundText()});
}

void frmSTaisyousya::Command2_Click() {
    plan({});
}

bool frmSTaisyousya::confirmLoss() {
    constexpr qsizetype kNamed = 8;
    QStringList losing;
    for (int row : changedRows()) {
        const Assignee& person = people_[static_cast<std::size_t>(row)];
        if (person.entered.any())
            losing << QStringLiteral("・%1 %2：%3").arg(person.syainCode, nameIn(row), told(person.entered));
    }
    if (losing.isEmpty()) return true;
    QString lines = losing.mid(0, kNamed).join(u'\n');
    if (losing.size() > kNamed) lines += QStringLiteral("\n　ほか%1人").arg(losing.size() - kNamed);
    return forms::confirmLoss(
        this,
        QStringLiteral("配分基準が変わる次の社員には、今の配分基準で入力または計算したものがあります。\n"
                       "登録すると、それらは削除されます。元には戻せません。\n\n%1")
            .arg(lines),
        QStringLiteral("削除の確認"), QStringLiteral("削除して登録する(&D)"), QStringLiteral("戻る(&B)"));
}

bool frmSTaisyousya::store() {
    const QDate kijunbi = store::requireDate(house_.global.kijunbi);
    std::map<Assignment, QStringList> groups;
    for (int row : changedRows()) groups[future(row)] << people_[static_cast<std::size_t>(row)].syainCode;
    return forms::guarded(this, [&] {
        setHourglass();
        store::Work work(*house_.global.cn_main, QStringLiteral("対応の登録"));
        for (const auto& [assignment, codes] : groups)
            assign(*house_.global.cn_main, kijunbi, codes, assignment);
        work.commit();
        setDefaultPointer();
    });
}

void frmSTaisyousya::Command3_Click() {
    const auto count = changedRows().size();
    if (count == 0 || !confirmLoss() || !store()) return;
    forms::guarded(this, [this] { Form_Load(); });
    forms::tell(this, QStringLiteral("%1人の対応を登録しました。").arg(count), QStringLiteral("登録の確認"),
                forms::BoxIcon::Information);
}

void frmSTaisyousya::reject() {
    const auto count = changedRows().size();
    if (count > 0 &&
        !forms::confirmLoss(this, QStringLiteral("登録していない変更が%1人分あります。").arg(count),
                            QStringLiteral("終了の確認"), QStringLiteral("登録せずに閉じる(&C)"),
                            QStringLiteral("入力に戻る(&B)")))
        return;
    Form::reject();
}

}  // namespace prep
