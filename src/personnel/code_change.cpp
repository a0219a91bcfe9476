#include "personnel/code_change.h"

#include <algorithm>

#include "schema/catalog.h"
#include "schema/files.h"
#include "store/work.h"

namespace t = schema::tables;

namespace personnel {
namespace {

const QString kNote = QString::fromUtf16(t::Sコード変更予定::kName);

bool same(const CutOffChange& one, const CutOffChange& other) {
    return one.referent == other.referent && one.from == other.from && one.to == other.to &&
           one.removal == other.removal;
}

constexpr struct {
    schema::File file;
    int column;
} kHolders[] = {{schema::File::Chingin, t::Sコード変更予定::賃金},
                {schema::File::Hyouka, t::Sコード変更予定::評価}};

/// The kind is noted as the table of the code itself: that outlives any order of the program's own lists.
std::optional<CutOffChange> noted(store::Connection& cn_main) {
    auto row = cn_main.prepare(QStringLiteral("select * from %1 order by ID desc limit 1").arg(kNote));
    if (!row.step()) return {};
    namespace note = t::Sコード変更予定;
    CutOffChange change{.referent = referentOf(row.toText(note::対象)),
                        .from = {row.toText(note::旧Code), row.toText(note::旧親Code)},
                        .to = {row.toText(note::新Code), row.toText(note::新親Code)},
                        .removal = row.toBool(note::削除)};
    for (const auto& [file, column] : kHolders)
        if (row.toBool(column)) change.holders.push_back(file);
    return change;
}

QString nameOf(const CompanyDatabases& company, const CutOffChange& change) {
    if (change.referent != Referent::Syain) return {};
    auto row = company.cn_main.prepare(QStringLiteral("select 氏名 from 履歴書テーブル where 社員Code = ?"));
    row.bind(1, change.from.code);
    return row.step() ? row.toText(0) : QString();
}

/// Which files the change has reached: each changes as a whole.
void look(const CompanyDatabases& company, CutOffChange& change) {
    const std::vector<schema::File> standing = secondaryFiles(company, change.referent);
    for (const schema::File file : change.holders) {
        if (std::find(standing.begin(), standing.end(), file) == standing.end()) continue;
        const bool old = holdsCode(company, file, change.referent, change.from);
        (old ? change.unchanged : change.changed) << schema::fileName(company.company, file);
    }
    for (const schema::File file : {schema::File::Kihon, schema::File::Syouyo})
        change.unchanged << schema::fileName(company.company, file);
    change.shimei = nameOf(company, change);
    change.clear = change.removal || !entryStands(company.cn_main, change.referent, change.to);
}

void write(const CompanyDatabases& company, const CutOffChange& change) {
    const schema::Table& table = schema::tableNamed(kNote);
    QStringList columns;
    for (std::size_t i = 1; i < table.columns.size(); ++i) columns << table.columns[i].name;
    const QStringList marks(columns.size(), QStringLiteral("?"));
    store::Binds values{entryTable(change.referent), change.removal, change.from.code,
                        change.from.parent,          change.to.code, change.to.parent};
    for (const auto& [file, column] : kHolders)
        values.push_back(std::find(change.holders.begin(), change.holders.end(), file) !=
                         change.holders.end());
    const QString text = QStringLiteral("insert into %1(%2) values(%3)");
    company.cn_main.prepare(text.arg(kNote, columns.join(u','), marks.join(u',')))
        .into(schema::typesOf(table, columns))
        .bindAll(values)
        .run();
}

void announce(const CompanyDatabases& company, CutOffChange change) {
    Q_ASSERT(!company.cn_main.inTransaction());
    const auto before = noted(company.cn_main);
    if (before && same(*before, change)) return;  // tried again
    settleChange(company);
    for (const schema::File file : secondaryFiles(company, change.referent))
        if (holdsCode(company, file, change.referent, change.from)) change.holders.push_back(file);
    if (!change.holders.empty()) write(company, change);
}

}  // namespace

void announceRename(const CompanyDatabases& company, Referent referent, const CodeKey& from,
                    const CodeKey& to) {
    if (!(from == to)) announce(company, {.referent = referent, .from = from, .to = to});
}

void announceRemoval(const CompanyDatabases& company, Referent referent, const CodeKey& key) {
    announce(company, {.referent = referent, .from = key, .removal = true});
}

void settleChange(const CompanyDatabases& company) {
    if (const auto change = cutOffChange(company)) takeBackChange(company, *change);
}

void forgetChange(store::Connection& cn_main) {
    cn_main.execute(QStringLiteral("delete from ") + kNote);
}

std::optional<CutOffChange> cutOffChange(const CompanyDatabases& company) {
    auto change = noted(company.cn_main);
    if (!change) return {};
    look(company, *change);
    if (!change->changed.isEmpty()) return change;
    forgetChange(company.cn_main);
    return {};
}

void finishChange(const CompanyDatabases& company, const CutOffChange& change) {
    if (!change.clear) return forgetChange(company.cn_main);
    store::Work work(company.cn_main, store::Work::Reserve::AsWritten);
    if (change.removal) {
        removeCode(company, change.referent, change.from);
        removeEntry(company.cn_main, change.referent, change.from);
    } else {
        renameCode(company, change.referent, change.from, change.to, change.shimei);
        renameEntry(company.cn_main, change.referent, change.from, change.to);
    }
    work.commit();
}

void takeBackChange(const CompanyDatabases& company, const CutOffChange& change) {
    if (change.clear && !change.removal)
        renameInSecondaries(company, change.referent, change.to, change.from, change.shimei);
    forgetChange(company.cn_main);
}

}  // namespace personnel
