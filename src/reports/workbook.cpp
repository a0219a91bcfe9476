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
    const auto& number = std::get<SheetGrid::Number>(cell);
    if (number.look == NumberLook::Factor) return displayWidth(QString::number(number.value, 'f', 3));
    const QString text = QString::number(number.value, 'g', 15);
    return displayWidth(text) + (number.look == NumberLook::Amount ? int(text.size() - 1) / 3 : 0);
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

void SheetGrid::setTexts(int row, const QStringList& texts) {
    for (int i = 0; i < texts.size(); ++i) setText(row, i + 1, texts[i]);
}

void SheetGrid::setNumber(int row, int column, double number, NumberLook look) {
    set(row, column, Number{number, look});
    numeric_.insert(column);
}

void SheetGrid::setAmount(int row, int column, const std::optional<store::Money>& amount) {
    if (amount) setNumber(row, column, amount->toDouble(), NumberLook::Amount);
}

void SheetGrid::setValue(int row, int column, const Value& value) {
    switch (value.kind()) {
        case Value::Kind::Null:
            return;
        case Value::Kind::Money:
            return setAmount(row, column, value.toMoney());
        case Value::Kind::Integer:
        case Value::Kind::Double:
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

double SheetGrid::columnWidth(int column) const {
    if (const auto set = widths_.find(column); set != widths_.end()) return set->second;
    int widest = 0;
    for (auto row = rows_.lower_bound(headingRow_); row != rows_.end(); ++row)
        for (const auto& [cellColumn, cell] : row->second)
            if (cellColumn == column) widest = std::max(widest, displayWidth(cell));
    return std::clamp(widest + 2.0, kMinWidth, kMaxWidth);
}

QString safeSheetName(const QString& wanted) {
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
    return name;
}

SheetFolder::SheetFolder(Options options) : options_(std::move(options)) {}

QString SheetFolder::defaultFolder() {
    return QDir(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation))
        .filePath(QStringLiteral("ひなた堂ミント"));
}

QString SheetFolder::send(const SheetGrid& grid, const ListTitle& title) const {
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
    const QString name = safeSheetName(title.subject.isEmpty() ? title.list : title.subject);
    options_.writer(file.fileName(), {grid, name, fileStem(title), originLine(title)});

    // Renaming refuses a name that exists: a file that was written is never replaced.
    const QString stem = QDir(options_.folder).absoluteFilePath(fileStem(title));
    QString path = stem + QStringLiteral(".xlsx");
    for (int n = 2; QFile::exists(path); ++n) path = QStringLiteral("%1 (%2).xlsx").arg(stem).arg(n);
    if (!file.rename(path))
        throw Error(Error::Reason::ReadOnly,
                    QStringLiteral("Excel ファイルを保存できません。\n%1").arg(path));
    file.setAutoRemove(false);
    return path;
}

}  // namespace reports
