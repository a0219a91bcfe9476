#include "personnel/person_import.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>

#include "domain/code_page.h"
#include "personnel/import_rows.h"

namespace personnel {
namespace {

using namespace Qt::StringLiterals;
using store::Error;

[[noreturn]] void refuseFile(const QString& text) {
    throw Error(Error::Reason::Type, text);
}

/// Width of characters and case make no difference: 住所１ is 住所1, TEL is tel.
QString folded(const QString& heading) {
    return heading.normalized(QString::NormalizationForm_KC).toCaseFolded().remove(u' ');
}

/// For each item of the import the column of the sheet, -1 without one.
class Headings {
  public:
    Headings(const std::vector<ImportItem>& items, const QStringList& cells) : headings_(cells) {
        for (const ImportItem& item : items) {
            const int column = columnOf(item, cells);
            // A company may name an attribute as another item: its cells must not fill both.
            if (column >= 0 && std::find(columns_.begin(), columns_.end(), column) != columns_.end())
                refuseFile(u"見出し「%1」は2つの項目に当てはまります。"_s.arg(cells[column]));
            columns_.push_back(column);
        }
        for (int i = 0; i < cells.size(); ++i)
            if (!cells[i].isEmpty() && std::find(columns_.begin(), columns_.end(), i) == columns_.end())
                ignored_ << cells[i];
    }
    QStringList ignored() const { return ignored_; }
    /// A cell without a heading: a comma inside a cell without quotes moves all cells behind it.
    bool overrun(const domain::CsvRow& row) const {
        for (qsizetype i = 0; i < row.cells.size(); ++i)
            if (!row.cells[i].isEmpty() && headings_.value(i).isEmpty()) return true;
        return false;
    }

    /// The cells of a row, one for each item.
    QStringList given(const domain::CsvRow& row) const {
        QStringList cells;
        for (const int column : columns_) cells << row.cells.value(column);
        return cells;
    }

  private:
    static int columnOf(const ImportItem& item, const QStringList& cells) {
        int found = -1;
        for (int i = 0; i < cells.size(); ++i) {
            const QString heading = folded(cells[i]);
            if (heading != folded(item.heading) && heading != folded(item.column)) continue;
            if (found >= 0) refuseFile(u"見出し「%1」が2つあります。"_s.arg(cells[i]));
            found = i;
        }
        if (found < 0 && item.isKey)
            refuseFile(u"見出し「%1」がありません。1行目に見出しを入れてください。"_s.arg(item.heading));
        return found;
    }

    QStringList headings_;
    std::vector<int> columns_;
    QStringList ignored_;
};

}  // namespace

QByteArray importTemplate(store::Connection& cn, ImportKind kind) {
    const EntryItems entered = EntryItems::read(cn);
    QStringList headings;
    for (const ImportItem& item : importItems(entered, kind))
        if (entered.entered(item.column)) headings << item.heading;
    return "\xEF\xBB\xBF" + domain::csvLine(headings).toUtf8();
}

std::vector<domain::CsvRow> readImportFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) refuseFile(u"ファイルを開けません。"_s);
    constexpr qint64 kMega = 1024 * 1024;
    if (file.size() > kMaxImportBytes)
        refuseFile(u"ファイルが大きすぎます（%1 MB）。%2 MB までのファイルに分けてください。"_s
                       .arg((file.size() + kMega - 1) / kMega)
                       .arg(kMaxImportBytes / kMega));
    const QByteArray bytes = file.readAll();
    if (bytes.startsWith("PK\x03\x04") || bytes.startsWith("\xD0\xCF\x11\xE0"))
        refuseFile(
            u"Excelのブックはそのままでは読み込めません。Excelの［名前を付けて保存］で"
            "「CSV UTF-8（コンマ区切り）」を選んで保存し、そのファイルを選んでください。"_s);
    const auto text = domain::decodeText(bytes);
    if (!text) refuseFile(u"文字を読み取れません。UTF-8かシフトJISのCSVファイルを選んでください。"_s);
    std::vector<domain::CsvRow> rows = domain::parseCsv(*text);
    if (rows.size() < 2)
        refuseFile(u"取り込む行がありません。1行目に見出し、2行目からデータを入れてください。"_s);
    return rows;
}

int ImportPlan::count(ImportRow::Outcome outcome) const {
    return static_cast<int>(std::count_if(rows.begin(), rows.end(),
                                          [&](const ImportRow& row) { return row.outcome == outcome; }));
}

ImportPlan planImport(store::Connection& cn, ImportKind kind, const std::vector<domain::CsvRow>& sheet,
                      const ImportWish& wish) {
    if (sheet.empty()) refuseFile(u"取り込む行がありません。"_s);
    const auto judge = makeRowJudge(cn, kind, wish);
    const Headings headings(judge->items(), sheet.front().cells);
    ImportPlan plan{kind, {}, headings.ignored()};
    plan.rows.reserve(sheet.size() - 1);
    for (auto row = sheet.begin() + 1; row != sheet.end(); ++row) {
        ImportRow judged = judge->judge(row->line, headings.given(*row));
        if (headings.overrun(*row)) {
            if (judged.outcome != ImportRow::Outcome::Refused) judged.reasons.clear();
            judged.outcome = ImportRow::Outcome::Refused;
            judged.reasons.prepend(
                u"見出しのない列に値があります。「,」を含む項目は「\"」で囲んでください。"_s);
        }
        plan.rows.push_back(std::move(judged));
    }
    return plan;
}

void runImport(store::Connection& cn, const ImportPlan& plan) {
    Q_ASSERT(plan.mayRun());
    ImportWriter writer(cn, plan.kind);
    for (const ImportRow& row : plan.rows) writer.write(row);
}

}  // namespace personnel
