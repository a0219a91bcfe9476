#include "reports/workbook.h"

#include <QDir>
#include <QStandardPaths>
#include <QTemporaryFile>
#include <algorithm>

#include "store/date_text.h"
#include "store/error.h"

namespace reports {

using store::Error;
using store::Value;

namespace {

constexpr int kHeadingRow = kFirstListRow - 1;
constexpr int kMaxSheetRow = kFirstListRow - 1 + kMaxListRows;
constexpr qsizetype kMaxSheetName = 31;
constexpr double kMinWidth = 8;
constexpr double kMaxWidth = 60;

/// In half-width characters: kana, kanji and full-width forms take two.
int displayWidth(const QString& text) {
    int width = 0;
    for (const QChar c : text) {
        const bool half = c.unicode() < 0x1100 || (c.unicode() >= 0xFF61 && c.unicode() <= 0xFF9F);
        width += half ? 1 : 2;
    }
    return width;
}

int displayWidth(const SheetGrid::Cell& cell) {
    if (const auto* text = std::get_if<QString>(&cell)) return displayWidth(*text);
    if (const auto* date = std::get_if<QDate>(&cell)) return displayWidth(store::formatDate(*date));
    return displayWidth(QString::number(std::get<double>(cell), 'g', 15));
}

}  // namespace

void SheetGrid::set(int row, int column, Cell cell) {
    Q_ASSERT(row >= 1 && column >= 1);
    if (row > kMaxSheetRow) store::throwOverflow();
    rows_[row].emplace_back(column, std::move(cell));
    columns_ = std::max(columns_, column);
}

void SheetGrid::setText(int row, int column, const QString& text) {
    set(row, column, text);
}
void SheetGrid::setNumber(int row, int column, double number) {
    set(row, column, number);
}

void SheetGrid::setValue(int row, int column, const Value& value) {
    switch (value.kind()) {
        case Value::Kind::Null:
            return;
        case Value::Kind::Integer:
        case Value::Kind::Double:
        case Value::Kind::Money:
            return setNumber(row, column, value.toDouble());
        case Value::Kind::Date:
            return set(row, column, value.toDate());
        case Value::Kind::Boolean:
        case Value::Kind::Text:
            return setText(row, column, value.toText());
    }
}

void SheetGrid::setColumnWidth(int column, double characters) {
    widths_[column] = characters;
}

void SheetGrid::setRightAligned(int column) {
    if (!isRightAligned(column)) rightAligned_.push_back(column);
}

bool SheetGrid::isRightAligned(int column) const {
    return std::find(rightAligned_.begin(), rightAligned_.end(), column) != rightAligned_.end();
}

double SheetGrid::columnWidth(int column) const {
    if (const auto set = widths_.find(column); set != widths_.end()) return set->second;
    int widest = 0;
    for (auto row = rows_.lower_bound(kHeadingRow); row != rows_.end(); ++row)
        for (const auto& [cellColumn, cell] : row->second)
            if (cellColumn == column) widest = std::max(widest, displayWidth(cell));
    return std::clamp(widest + 2.0, kMinWidth, kMaxWidth);
}

QString safeSheetName(const QString& wanted, const QStringList& taken) {
    static const QString kForbidden = QStringLiteral("[]:*?/\\");
    static const QString kInstead = QStringLiteral("［］：＊？／＼");
    QString name;
    for (const QChar c : wanted) {
        const auto at = kForbidden.indexOf(c);
        const bool unfit = c.category() == QChar::Other_Control || c.unicode() >= 0xFFFE;
        name += at >= 0 ? kInstead[at] : unfit ? QChar(u' ') : c;
    }
    const auto cut = [](QString text, qsizetype length) {
        if (text.size() > length) text.truncate(text[length - 1].isHighSurrogate() ? length - 1 : length);
        return text;
    };
    name = cut(name.trimmed(), kMaxSheetName);
    if (name.startsWith(u'\'')) name[0] = u'＇';
    if (name.endsWith(u'\'')) name[name.size() - 1] = u'＇';
    if (name.isEmpty()) name = QStringLiteral("一覧");
    // The name is reserved for the record of a shared workbook's changes.
    if (name.compare(QStringLiteral("History"), Qt::CaseInsensitive) == 0) name += u'_';
    QString unique = name;
    for (int n = 2; taken.contains(unique, Qt::CaseInsensitive); ++n) {
        const QString suffix = QStringLiteral(" (%1)").arg(n);
        unique = cut(name, kMaxSheetName - suffix.size()) + suffix;
    }
    return unique;
}

ExportSession::ExportSession(Options options) : options_(std::move(options)) {}

QString ExportSession::defaultFolder() {
    return QDir(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation))
        .filePath(QStringLiteral("ひなた堂ミント"));
}

/// Numbered by the sends of this run; the number goes on where a file of that name stands.
QString ExportSession::freePath() const {
    const QDir folder(options_.folder);
    const QString stem = options_.prefix + options_.now().toString(QStringLiteral("_yyyyMMdd_HHmmss_"));
    for (int n = sent_ + 1;; ++n) {
        const QString path = folder.absoluteFilePath(stem + QString::number(n) + QStringLiteral(".xlsx"));
        if (!QFile::exists(path)) return path;
    }
}

QString ExportSession::send(const SheetGrid& grid, const QString& sheetName) {
    if (!QDir().mkpath(options_.folder))
        throw Error(
            Error::Reason::ReadOnly,
            QStringLiteral("Excel ファイルを保存するフォルダを作成できません。\n%1").arg(options_.folder));
    QTemporaryFile file(QDir(options_.folder).filePath(QStringLiteral("XXXXXX.tmp")));
    if (!file.open())
        throw Error(
            Error::Reason::ReadOnly,
            QStringLiteral("Excel ファイルを保存するフォルダに書き込めません。\n%1").arg(options_.folder));
    file.close();

    QStringList taken;
    for (const NamedSheet& sheet : sheets_) taken << sheet.name;
    std::vector<NamedSheet> sheets{
        {safeSheetName(sheetName, taken), std::make_shared<const SheetGrid>(grid)}};
    sheets.insert(sheets.end(), sheets_.begin(), sheets_.end());
    options_.writer(file.fileName(), sheets);

    const QString path = freePath();
    // Renaming refuses a name that exists: a file that was written is never replaced.
    if (!file.rename(path))
        throw Error(Error::Reason::ReadOnly,
                    QStringLiteral("Excel ファイルを保存できません。\n%1").arg(path));
    file.setAutoRemove(false);
    sheets_ = std::move(sheets);
    ++sent_;
    return path;
}

}  // namespace reports
