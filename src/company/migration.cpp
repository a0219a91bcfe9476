#include "company/migration.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QSet>
#include <algorithm>
#include <array>
#include <map>
#include <numeric>

#include "company/company_files.h"
#include "company/create.h"
#include "company/jet_file.h"
#include "company/key.h"
#include "domain/code_map.h"
#include "schema/catalog.h"
#include "schema/files.h"
#include "store/work.h"

namespace company {
namespace {

using namespace Qt::StringLiterals;
using schema::Table;
using store::TypeKind;
using store::Value;

constexpr std::array kFiles{schema::File::Kihon, schema::File::Chingin, schema::File::Hyouka,
                            schema::File::Syouyo};

const Table* ourTable(schema::File file, const QString& name) {
    for (const Table& table : schema::catalog())
        if (table.file == file && table.name == name && table.lifetime != schema::Lifetime::Scratch)
            return &table;
    return nullptr;
}

/// Tables that this program keeps for itself: what another one has under the name means nothing here.
bool isOwn(const QString& table) {
    return table == u"Sリンクテーブル" || table == u"Sコード変更予定" || table == u"S開始パスワード";
}

/// The rows of a Jet table in the order and the types of ours.
void carryRows(const JetFile::Rows& from, MovedTable& into) {
    const Table& table = *into.table;
    std::vector<int> source(table.columns.size(), -1);
    for (std::size_t i = 0; i < table.columns.size(); ++i)
        for (std::size_t j = 0; j < from.columns.size(); ++j)
            if (from.columns[j].name == table.columns[i].name) source[i] = int(j);
    const auto lose = [&into](const QString& note) {
        into.notes << note;
        into.loses = true;
    };
    for (std::size_t j = 0; j < from.columns.size(); ++j) {
        if (std::find(source.begin(), source.end(), int(j)) != source.end()) continue;
        const auto filled = std::count_if(from.rows.begin(), from.rows.end(),
                                          [j](const auto& row) { return !row[j].isNull(); });
        const QString note =
            u"列「%1」は引き継げません（値のある行 %L2件）。"_s.arg(from.columns[j].name).arg(filled);
        filled > 0 ? lose(note) : void(into.notes << note);
    }
    QStringList missing;
    for (std::size_t i = 0; i < table.columns.size(); ++i)
        if (source[i] < 0) missing << table.columns[i].name;
    if (!missing.isEmpty()) into.notes << u"列「%1」は元になく、空になります。"_s.arg(missing.join(u'、'));
    std::vector<qint64> refused(table.columns.size(), 0);
    for (const auto& row : from.rows) {
        std::vector<Value>& moved = into.rows.emplace_back(table.columns.size());
        for (std::size_t i = 0; i < table.columns.size(); ++i) {
            if (source[i] < 0 || row[std::size_t(source[i])].isNull()) continue;
            try {
                moved[i] = store::convertTo(table.columns[i].type, row[std::size_t(source[i])]);
            } catch (const store::Error&) {
                ++refused[i];
            }
        }
    }
    for (std::size_t i = 0; i < refused.size(); ++i)
        if (refused[i] > 0)
            lose(u"列「%1」に入らない値が %L2件あり、空になります。"_s.arg(table.columns[i].name)
                     .arg(refused[i]));
    // Counters are kept as they are, unless a damage made two of them alike.
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        if (table.columns[i].type.kind != TypeKind::Counter) continue;
        QSet<qint64> seen;
        bool unique = true;
        for (const auto& row : into.rows) {
            if (row[i].isNull()) continue;
            unique = unique && !seen.contains(row[i].toInteger());
            seen << row[i].toInteger();
        }
        if (unique) continue;
        into.notes << u"番号「%1」に重なりがあるため、付け直します。"_s.arg(table.columns[i].name);
        for (auto& row : into.rows) row[i] = Value();
    }
    if (from.dayTimes > 0)
        into.notes << u"時刻のついた日付が %L1件あり、日付だけを引き継ぎます。"_s.arg(from.dayTimes);
    if (from.unreadable > 0) lose(u"壊れていて読めないところが %L1か所あります。"_s.arg(from.unreadable));
    if (from.stated != qint64(from.rows.size()))
        lose(u"元の件数は %L1件ですが、読めたのは %L2件です。"_s.arg(from.stated).arg(from.rows.size()));
}

void readFile(const QString& path, schema::File file, Migration& plan) {
    const JetFile jet(path, sharedKey().passphrase());
    for (const QString& name : jet.tables()) {
        MovedTable& moved = plan.tables.emplace_back();
        moved.file = QFileInfo(path).fileName();
        moved.name = name;
        moved.table = isOwn(name) ? nullptr : ourTable(file, name);
        try {
            const JetFile::Rows rows = jet.read(name);
            moved.found = rows.stated;
            if (moved.table) {
                carryRows(rows, moved);
            } else if (!isOwn(name)) {
                moved.notes << u"このプログラムにないテーブルのため、引き継げません。"_s;
                moved.loses = moved.found > 0;
            }
        } catch (const store::Error& error) {
            moved.notes << error.text();
            moved.loses = true;
        }
    }
}

// ---- Codes that nothing stands behind

const MovedTable* tableIn(const Migration& plan, const Table* table) {
    for (const MovedTable& moved : plan.tables)
        if (moved.table == table) return &moved;
    return nullptr;
}

QString keyIn(const std::vector<Value>& row, int column, int parent) {
    const QString code = row[std::size_t(column)].isNull() ? QString() : row[std::size_t(column)].toText();
    if (code.isEmpty()) return {};
    return parent < 0 || row[std::size_t(parent)].isNull()
               ? code
               : row[std::size_t(parent)].toText() + u'\x1f' + code;
}

void noteLooseCodes(Migration& plan) {
    std::map<domain::Referent, QSet<QString>> known;
    const auto keysOf = [&](domain::Referent referent) -> const QSet<QString>& {
        const auto [at, added] = known.try_emplace(referent);
        if (!added) return at->second;
        const domain::Reference entry = domain::entryOf(referent);
        if (const MovedTable* moved = tableIn(plan, entry.table))
            for (const auto& row : moved->rows)
                at->second << keyIn(row, entry.column, entry.parentColumn) << keyIn(row, entry.column, -1);
        return at->second;
    };
    for (const domain::Reference& reference : domain::codeReferences()) {
        for (MovedTable& moved : plan.tables) {
            if (moved.table != reference.table || reference.column < 0) continue;
            const QSet<QString>& keys = keysOf(reference.refersTo);
            qint64 loose = 0;
            for (const auto& row : moved.rows) {
                const QString key = keyIn(row, reference.column, reference.parentColumn);
                loose += !key.isEmpty() && !keys.contains(key);
            }
            if (loose > 0)
                moved.notes << u"「%1」に、%2にないコードの行が %L3件あります。"_s
                                   .arg(moved.table->columns[std::size_t(reference.column)].name,
                                        domain::entryTable(reference.refersTo))
                                   .arg(loose);
        }
    }
}

// ---- Counts and sums of both sides

/// The sum of an amount for each 基準日 of a table ("" where it has none).
using Sums = std::map<QString, store::Money>;

int dateColumn(const Table& table) {
    for (std::size_t i = 0; i < table.columns.size(); ++i)
        if (table.columns[i].name == u"基準日" && table.columns[i].type.kind == TypeKind::DateTime)
            return int(i);
    return -1;
}

Sums plannedSums(const MovedTable& moved, std::size_t column) {
    Sums sums;
    const int date = dateColumn(*moved.table);
    for (const auto& row : moved.rows) {
        const QString key =
            date < 0 || row[std::size_t(date)].isNull() ? QString() : row[std::size_t(date)].toText();
        store::Money& sum = sums[key];
        if (!row[column].isNull()) sum += row[column].toMoney();
    }
    return sums;
}

Sums writtenSums(store::Connection& cn, const Table& table, std::size_t column) {
    Sums sums;
    const int date = dateColumn(table);
    store::Statement rows = cn.prepare(u"select %1, %2 from %3"_s.arg(
        date < 0 ? u"null"_s : u"基準日"_s, table.columns[column].name, table.name));
    while (rows.step()) {
        store::Money& sum = sums[rows.isNull(0) ? QString() : store::Value(rows.toDate(0)).toText()];
        if (!rows.isNull(1)) sum += rows.toMoney(1);
    }
    return sums;
}

[[noreturn]] void throwDiffers(const QString& table) {
    throw store::Error(
        store::Error::Reason::Damaged,
        u"「%1」の件数か合計が元のデータと一致しないため、引っ越しを取り消しました。"_s.arg(table));
}

/// Writes a table and adds what came of it to the report.
void writeTable(store::Connection& cn, const MovedTable& moved, QStringList& report) {
    const Table& table = *moved.table;
    cn.execute(u"delete from %1"_s.arg(table.name));
    const QStringList marks(qsizetype(table.columns.size()), u"?"_s);
    store::Statement insert = cn.prepare(u"insert into %1 values(%2)"_s.arg(table.name, marks.join(u',')));
    std::vector<store::ColumnType> types;
    for (const schema::Column& column : table.columns) types.push_back(column.type);
    insert.into(std::move(types));
    for (const auto& row : moved.rows) insert.bindAll(row).run();
    const qint64 written = cn.query(u"select count(*) from %1"_s.arg(table.name)).value(0).toInteger();
    if (written != qint64(moved.rows.size())) throwDiffers(table.name);
    report << u"%1\t%L2件\t%L3件"_s.arg(table.name).arg(moved.rows.size()).arg(written);
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        if (table.columns[i].type.kind != TypeKind::Currency) continue;
        const Sums before = plannedSums(moved, i), after = writtenSums(cn, table, i);
        if (before != after) throwDiffers(table.name);
        for (const auto& [date, sum] : before)
            report << u"\t%1 %2\t%3\t%4"_s.arg(date, table.columns[i].name, store::formatGrouped(sum),
                                               store::formatGrouped(after.at(date)));
    }
}

void writeCompany(const Migration& plan, const QString& folder, const QString& name, QStringList& report) {
    for (const schema::File file : kFiles) {
        const QString path = folder + u'/' + schema::fileName(name, file);
        if (!QFileInfo::exists(path)) continue;
        store::Connection cn(path, keyOf(folder));
        store::Work work(cn);
        for (const MovedTable& moved : plan.tables)
            if (moved.table && moved.table->file == file) writeTable(cn, moved, report);
        work.commit();
    }
}

}  // namespace

qint64 Migration::rows() const {
    return std::accumulate(tables.begin(), tables.end(), qint64(0), [](qint64 sum, const MovedTable& table) {
        return sum + qint64(table.rows.size());
    });
}

bool Migration::loses() const {
    return !notes.isEmpty() ||
           std::any_of(tables.begin(), tables.end(), [](const MovedTable& table) { return table.loses; });
}

std::optional<Migration> planMigration(const QString& folder, const store::Progress& progress) {
    Migration plan;
    plan.folder = folder;
    plan.company = companyIn(folder);
    if (plan.company.isEmpty())
        throw store::Error(store::Error::Reason::NotOpen, u"このフォルダに会社のデータはありません。\n"_s +
                                                              QDir::toNativeSeparators(folder));
    qint64 done = 0;
    for (const schema::File file : kFiles) {
        if (progress && !progress(done++, kFiles.size())) return std::nullopt;
        const QString path = QDir(folder).filePath(schema::fileName(plan.company, file));
        if (QFileInfo::exists(path)) readFile(path, file, plan);
    }
    for (const QString& name : databaseNames(plan.company).mid(qsizetype(kFiles.size())))
        if (QFileInfo::exists(QDir(folder).filePath(name)))
            plan.notes << u"%1 は、このプログラムで使わないため引き継ぎません。"_s.arg(name);
    noteLooseCodes(plan);
    return plan;
}

QString migrate(const Migration& plan, const QString& dataDir, const QString& name) {
    const auto has = [&plan](schema::File file) {
        return std::any_of(plan.tables.begin(), plan.tables.end(), [&](const MovedTable& moved) {
            return moved.file == schema::fileName(plan.company, file);
        });
    };
    QStringList report{u"引っ越しの記録　%1"_s.arg(QDateTime::currentDateTime().toString(u"yyyy/M/d H:mm"_s)),
                       u"元のフォルダ　%1"_s.arg(QDir::toNativeSeparators(plan.folder)), QString(),
                       u"テーブル\t元\t引っ越し後"_s};
    NewCompany made{.name = name};
    made.companions = {has(schema::File::Chingin), has(schema::File::Hyouka), true};
    made.fill = [&](const QString& folder) {
        writeCompany(plan, folder, name, report);
        report << QString() << u"引き継げなかったもの、確かめるもの"_s;
        report += plan.notes;
        for (const MovedTable& moved : plan.tables)
            for (const QString& note : moved.notes)
                report << u"%1　%2　%3"_s.arg(moved.file, moved.name, note);
        QFile file(folder + u'/' + kMigrationReport);
        const QByteArray text = report.join(u"\r\n"_s).toUtf8();
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.flush())
            throw store::Error(store::Error::Reason::DiskFull, u"引っ越しの記録を書き込めません。"_s);
    };
    createCompany(dataDir, made);
    return report.join(u'\n');
}

}  // namespace company
