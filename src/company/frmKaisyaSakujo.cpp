#include "company/frmKaisyaSakujo.h"

#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

#include "company/backup.h"
#include "company/company_open.h"
#include "company/company_set.h"
#include "company/ui_company_opening.h"
#include "forms/box.h"
#include "forms/global_record.h"
#include "forms/guard.h"
#include "forms/progress.h"
#include "widgets/code_list.h"
#include "widgets/layout.h"
#include "widgets/theme.h"

namespace company {
namespace {

using namespace Qt::StringLiterals;

const QString kTitle = u"会社削除の確認"_s;

/// What would vanish, a line each.
QString aboutText(const Places& places, const QString& company) {
    QStringList lines;
    try {
        const CompanySummary summary = CompanyMoment(places.data + u'/' + company, company).summary();
        const QString name = summary.registeredName.isEmpty() ? company : summary.registeredName;
        lines << u"会社名　　%1"_s.arg(name) << u"社員　　　%L1人"_s.arg(summary.people);
        lines << (summary.dates > 0 ? u"基準日　　%1回（最新 %2）"_s.arg(summary.dates)
                                          .arg(summary.newestDate.toString(u"yyyy/M/d"_s))
                                    : u"基準日　　ありません"_s);
        lines << u"大きさ　　%1"_s.arg(
            QLocale(QLocale::Japanese)
                .formattedDataSize(summary.bytes, 1, QLocale::DataSizeTraditionalFormat));
    } catch (const store::Error& error) {
        lines << u"データを開けません。"_s << error.text();
    }
    QString last = u"ありません"_s;
    for (const Backup& backup : backupsIn(places.backups()))
        if (backup.company == company && backup.whole) {
            last = backup.made.toString(u"yyyy/M/d H:mm"_s);
            break;
        }
    lines << u"最後のバックアップ　　"_s + last;
    return lines.join(u'\n');
}

}  // namespace

frmKaisyaSakujo::frmKaisyaSakujo(forms::House& house, QWidget* parent)
    : Form(u"frmKaisyaSakujo"_s, u"会社削除"_s, parent), house_(house) {
    build();
    loadCompanies();
    list1_->setFocus();
}

void frmKaisyaSakujo::build() {
    auto* title = make<QLabel>(u"Label1"_s, u"会社を削除します。"_s);
    auto* guide = make<QLabel>(
        u"Label2"_s, u"会社のフォルダにあるすべてのデータがなくなります。開いている会社は削除できません。"_s);
    list1_ = make<widgets::CodeList>(u"List1"_s);
    list1_->setAccessibleName(u"会社名"_s);
    list1_->setPlaceholder(u"会社がありません。"_s);
    list1_->setMinimumSize(36 * widgets::kGrid, 20 * widgets::kGrid);
    auto* card = new widgets::Card(this);
    about_ = make<QLabel>(u"lblAbout"_s);
    about_->setWordWrap(true);
    about_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    about_->setMinimumWidth(48 * widgets::kGrid);
    card->body()->addWidget(about_);
    backup_ = make<QCheckBox>(u"Check1"_s, u"削除の前にバックアップする（BackupDB）(&A)"_s);
    backup_->setChecked(true);
    typed_ = make<QLineEdit>(u"Text1"_s);
    auto* label = labelFor(u"Label3"_s, u"確認のため、会社名を入力してください(&N):"_s, typed_);
    remove_ = make<QPushButton>(u"Command1"_s, u"削除(&D)"_s);
    widgets::setDanger(remove_);
    auto* cancel = make<QPushButton>(u"Command2"_s, u"キャンセル(&C)"_s);
    setCancelButton(cancel);
    auto* help = make<QPushButton>(u"Command3"_s, u"ヘルプ(&H)"_s);
    auto* middle = new QHBoxLayout;
    middle->setSpacing(2 * widgets::kGrid);
    middle->addWidget(list1_, 1);
    middle->addWidget(card, 2);
    auto* fields = widgets::fieldGrid();
    widgets::addField(fields, label, typed_);
    auto* column = widgets::columnOf(this);
    column->addLayout(widgets::headerBlock(title, guide));
    column->addLayout(middle, 1);
    column->addWidget(backup_);
    column->addLayout(fields);
    column->addLayout(widgets::buttonRow({help, remove_}, {cancel}));
    widgets::tabOrder({list1_, backup_, typed_, remove_, cancel, help});
    connect(list1_, &widgets::CodeList::chosen, this, [this] { showChosen(); });
    connect(typed_, &QLineEdit::textChanged, this,
            [this] { remove_->setEnabled(!list1_->text().isEmpty() && typed_->text() == list1_->text()); });
    connect(remove_, &QPushButton::clicked, this, [this] { Command1_Click(); });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(help, &QPushButton::clicked, this, [this] {
        if (house_.help) house_.help(objectName());
    });
}

void frmKaisyaSakujo::loadCompanies() {
    forms::guarded(this, [this] {
        std::vector<widgets::CodeList::Item> items;
        for (const QString& name : companyFolders(house_.global.dataDir())) items.push_back({name, name});
        list1_->setItems(items);
    });
    showChosen();
}

void frmKaisyaSakujo::showChosen() {
    const QString name = list1_->text();
    typed_->clear();
    typed_->setEnabled(!name.isEmpty());
    remove_->setEnabled(false);
    about_->setText(u"削除する会社を選んでください。"_s);
    if (name.isEmpty()) return;
    setHourglass();
    about_->setText(aboutText(house_.global.places(), name));
    setDefaultPointer();
}

bool frmKaisyaSakujo::mayRemove(const QString& name) {
    if (openCompanyName(house_) == name) {
        forms::tell(
            this,
            u"『%1』は開いているため、削除できません。\n「会社指定」で閉じてから、もう一度選んでください。"_s
                .arg(name),
            kTitle, forms::BoxIcon::Warning);
        return false;
    }
    const QString kept = backup_->isChecked() ? u"バックアップしてから、削除します。"_s
                                              : u"バックアップしないで削除します。元に戻せません。"_s;
    return forms::confirmLoss(this, u"『%1』のすべてのデータを削除します。\n%2"_s.arg(name, kept), kTitle,
                              u"削除する(&D)"_s, u"削除しない(&B)"_s);
}

void frmKaisyaSakujo::Command1_Click() {
    const QString name = list1_->text();
    letGoOfUnopened(house_);
    if (!mayRemove(name)) return;
    bool done = false;
    forms::guarded(this, [&] {
        setHourglass();
        const Places places = house_.global.places();
        const auto lock = CompanyLock::acquire(places.data, name);
        if (!lock) {
            forms::tell(this,
                        u"『%1』は、ほかの人またはほかの画面が使用しているため、削除できません。"_s.arg(name),
                        kTitle, forms::BoxIcon::Warning);
            return;
        }
        if (backup_->isChecked()) {
            if (!unlockForHouse(house_, this, lock->folder(), name)) return;
            forms::ProgressBox progress(this, u"『%1』をバックアップしています。"_s.arg(name));
            if (!makeBackup(lock->folder(), name, places.backups() + u'/' + name, {u"削除の前"_s},
                            progress.step()))
                return;
        }
        removeSet(*lock);
        done = true;
    });
    if (!done) return;
    loadCompanies();
    forms::tell(this, u"『%1』を削除しました。"_s.arg(name), kTitle, forms::BoxIcon::Information);
    list1_->setFocus();
}

}  // namespace company
