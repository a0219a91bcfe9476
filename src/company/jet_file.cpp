#include "company/jet_file.h"

#include <QDate>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QtEndian>
#include <array>
#include <bit>
#include <cmath>
#include <numeric>

#include "store/error.h"
#include "store/money.h"

namespace company {

using namespace Qt::StringLiterals;

namespace {

constexpr quint32 kPage = 4096;
constexpr qint64 kLargest = qint64(2) << 30;  // of the format
constexpr int kDataPage = 1, kDefinitionPage = 2, kMapPage = 5;
constexpr quint32 kCatalogPage = 2;
constexpr int kMostColumns = 255;
constexpr qint64 kMostCells = 50'000'000;  // a damaged map can't fill the memory

enum JetType { Boolean = 1, Byte, Int, Long, Money, Float, Double, Date, Binary, Text, Ole, Memo };

[[noreturn]] void throwDamaged(const QString& what) {
    throw store::Error(store::Error::Reason::Damaged, what);
}

/// A read of the file's own words: what lies outside of them is a damage.
template <class T>
T at(const QByteArray& bytes, qsizetype offset) {
    if (offset < 0 || offset + qsizetype(sizeof(T)) > bytes.size()) throwDamaged(u"データが壊れています。"_s);
    return qFromLittleEndian<T>(bytes.constData() + offset);
}
QByteArray part(const QByteArray& bytes, qsizetype from, qsizetype length) {
    if (from < 0 || length < 0 || from + length > bytes.size()) throwDamaged(u"データが壊れています。"_s);
    return bytes.mid(from, length);
}

void rc4(QByteArray& bytes, qsizetype from, qsizetype length, const QByteArray& key) {
    std::array<quint8, 256> state{};
    std::iota(state.begin(), state.end(), quint8(0));
    for (int i = 0, j = 0; i < 256; ++i) {
        j = (j + state[std::size_t(i)] + quint8(key[i % key.size()])) & 255;
        std::swap(state[std::size_t(i)], state[std::size_t(j)]);
    }
    for (qsizetype n = 0, i = 0, j = 0; n < length; ++n) {
        i = (i + 1) & 255;
        j = (j + state[std::size_t(i)]) & 255;
        std::swap(state[std::size_t(i)], state[std::size_t(j)]);
        const auto key_ = state[(std::size_t(state[std::size_t(i)]) + state[std::size_t(j)]) & 255];
        bytes[from + n] = char(quint8(bytes[from + n]) ^ key_);
    }
}

QByteArray keyBytes(quint32 key) {
    QByteArray bytes(4, '\0');
    qToLittleEndian(key, bytes.data());
    return bytes;
}

QString utf16(const QByteArray& bytes) {
    QString text(bytes.size() / 2, u'\0');
    for (qsizetype i = 0; i < text.size(); ++i) text[i] = QChar(at<quint16>(bytes, 2 * i));
    return text;
}

/// Compressed text begins with FF FE: bytes stand for U+00xx, a zero byte switches to UTF-16 and back.
QString textOf(const QByteArray& bytes) {
    if (!bytes.startsWith("\xff\xfe")) return utf16(bytes);
    QString text;
    bool wide = false;
    for (qsizetype i = 2; i < bytes.size();) {
        if (bytes[i] == '\0') {
            wide = !wide;
            ++i;
        } else if (wide) {
            text += QChar(at<quint16>(bytes, i));
            i += 2;
        } else {
            text += QChar(quint8(bytes[i++]));
        }
    }
    return text;
}

}  // namespace

struct JetFile::Field {
    QString name;
    int type = 0, number = 0, variable = 0, offset = 0, length = 0;
    bool fixed = false;
};
struct JetFile::Definition {
    std::vector<Field> fields;
    quint32 rows = 0, page = 0, usageMap = 0;
};

JetFile::JetFile(const QString& path, const QString& password) : name_(QFileInfo(path).fileName()) {
    const auto refuse = [this](store::Error::Reason reason, const QString& why) {
        throw store::Error(reason, u"「%1」：%2"_s.arg(name_, why));
    };
    using Reason = store::Error::Reason;
    QFile file(path);
    if (QFileInfo(path).isSymLink()) refuse(Reason::NotOpen, u"リンクは読み込めません。"_s);
    if (!file.open(QIODevice::ReadOnly)) refuse(Reason::NotOpen, u"ファイルを開けません。"_s);
    if (file.size() > kLargest) refuse(Reason::NotOpen, u"ファイルが大きすぎます。"_s);
    file_ = file.readAll();
    if (file_.size() < qsizetype(3 * kPage) || file_.mid(4, 15) != "Standard Jet DB" || file_[0x14] != 1)
        refuse(Reason::NotOpen, u"この形式のファイルは読み込めません。"_s);
    pageCount_ = quint32(file_.size() / kPage);
    QByteArray header = file_.left(kPage);
    rc4(header, 0x18, 0x98 - 0x18, QByteArray("\xC7\xDA\x39\x6B", 4));
    pageKey_ = at<quint32>(header, 0x3E);
    const auto made = std::bit_cast<double>(at<quint64>(header, 0x72));
    const auto mask = std::isfinite(made) && std::abs(made) < 2e9 ? quint32(qint32(made)) : 0U;
    QString carried;
    for (int i = 0; i < 20; ++i) {
        const auto unit = quint16(at<quint16>(header, 0x42 + 2 * i) ^ quint16(i % 2 ? mask >> 16 : mask));
        if (unit == 0) break;
        carried += QChar(unit);
    }
    if (carried != password) refuse(Reason::NotOpen, u"パスワードが違うため、読み込めません。"_s);
    const Definition catalog = define(kCatalogPage);
    const Rows rows = rowsOf(catalog);
    const auto column = [&rows](const QString& name) {
        for (std::size_t i = 0; i < rows.columns.size(); ++i)
            if (rows.columns[i].name == name) return i;
        throwDamaged(u"ファイルの目録が壊れています。"_s);
    };
    const auto id = column(u"Id"_s), table = column(u"Name"_s), type = column(u"Type"_s),
               flags = column(u"Flags"_s);
    for (const auto& row : rows.rows) {
        if (row[id].isNull() || row[table].isNull() || row[type].isNull()) continue;
        const quint32 marks = row[flags].isNull() ? 0 : quint32(row[flags].toInteger());
        if (row[type].toInteger() != 1 || (marks & 0x80000002U)) continue;
        catalog_.push_back({row[table].toText(), quint32(row[id].toInteger()) & 0xFFFFFF});
    }
}

QByteArray JetFile::page(quint32 number) const {
    if (number == 0 || number >= pageCount_) throwDamaged(u"ファイルの外を指しています。"_s);
    QByteArray bytes = file_.mid(qsizetype(number) * kPage, kPage);
    if (pageKey_ != 0) rc4(bytes, 0, kPage, keyBytes(pageKey_ ^ number));
    return bytes;
}

JetFile::Definition JetFile::define(quint32 first) const {
    QByteArray text;
    QSet<quint32> seen;
    for (quint32 next = first; next != 0;) {
        if (seen.contains(next)) throwDamaged(u"テーブルの定義が壊れています。"_s);
        seen << next;
        const QByteArray bytes = page(next);
        if (bytes[0] != kDefinitionPage) throwDamaged(u"テーブルの定義が壊れています。"_s);
        text += text.isEmpty() ? bytes : bytes.mid(8);
        next = at<quint32>(bytes, 4);
    }
    Definition table;
    table.page = first;
    table.rows = at<quint32>(text, 0x10);
    const int count = at<quint16>(text, 0x2D);
    const quint32 indexes = at<quint32>(text, 0x33);
    table.usageMap = at<quint32>(text, 0x37);
    if (count > kMostColumns || indexes > quint32(text.size()))
        throwDamaged(u"テーブルの定義が壊れています。"_s);
    qsizetype position = 0x3F + 12 * qsizetype(indexes);
    for (int i = 0; i < count; ++i, position += 25) {
        Field field;
        field.type = at<quint8>(text, position);
        field.number = at<quint16>(text, position + 5);
        field.variable = at<quint16>(text, position + 7);
        field.fixed = at<quint8>(text, position + 15) & 1;
        field.offset = at<quint16>(text, position + 21);
        field.length = at<quint16>(text, position + 23);
        table.fields.push_back(field);
    }
    for (Field& field : table.fields) {
        const int length = at<quint16>(text, position);
        field.name = utf16(part(text, position + 2, length));
        position += 2 + length;
    }
    return table;
}

std::vector<quint32> JetFile::pagesOf(quint32 usageMap) const {
    const QByteArray map = rowAt(usageMap);
    std::vector<quint32> pages;
    const auto take = [&](const QByteArray& bits, qsizetype from, quint64 start) {
        for (qsizetype i = from; i < bits.size(); ++i)
            for (int bit = 0; bit < 8; ++bit) {
                const quint64 number = start + quint64(i - from) * 8 + quint64(bit);
                if ((quint8(bits[i]) >> bit & 1) && number < pageCount_) pages.push_back(quint32(number));
            }
    };
    if (at<quint8>(map, 0) == 0) {
        take(map, 5, at<quint32>(map, 1));
    } else {
        QSet<quint32> seen;
        constexpr quint64 kBits = quint64(kPage - 4) * 8;
        for (qsizetype i = 0; 1 + 4 * i + 4 <= map.size(); ++i) {
            const quint32 number = at<quint32>(map, 1 + 4 * i);
            if (number == 0) continue;
            if (seen.contains(number)) throwDamaged(u"ページの一覧が壊れています。"_s);
            seen << number;
            const QByteArray bits = page(number);
            if (bits[0] != kMapPage) throwDamaged(u"ページの一覧が壊れています。"_s);
            take(bits, 4, quint64(i) * kBits);
        }
    }
    return pages;
}

namespace {

struct Slot {
    int from = 0, to = 0;
    bool deleted = false, moved = false;
};
std::vector<Slot> slotsOf(const QByteArray& page) {
    if (page[0] != kDataPage) throwDamaged(u"データのページが壊れています。"_s);
    const int count = at<quint16>(page, 12);
    std::vector<Slot> found;
    int end = int(kPage);
    for (int i = 0; i < count; ++i) {
        const quint16 word = at<quint16>(page, 14 + 2 * i);
        const int from = word & 0x1FFF;
        if (from > end || from < 14 + 2 * count) throwDamaged(u"データのページが壊れています。"_s);
        found.push_back({from, end, (word & 0x8000) != 0, (word & 0x4000) != 0});
        end = from;
    }
    return found;
}

}  // namespace

QByteArray JetFile::rowAt(quint32 pointer) const {
    const QByteArray bytes = page(pointer >> 8);
    const auto found = slotsOf(bytes);
    const std::size_t row = pointer & 0xFF;
    if (row >= found.size()) throwDamaged(u"ファイルの外を指しています。"_s);
    return bytes.mid(found[row].from, found[row].to - found[row].from);
}

QStringList JetFile::tables() const {
    QStringList names;
    for (const Entry& entry : catalog_) names << entry.table;
    return names;
}

JetFile::Rows JetFile::read(const QString& table) const {
    for (const Entry& entry : catalog_)
        if (entry.table == table) return rowsOf(define(entry.page));
    throwDamaged(u"テーブル「%1」がありません。"_s.arg(table));
}

JetFile::Rows JetFile::rowsOf(const Definition& table) const {
    Rows told;
    told.stated = table.rows;
    for (const Field& field : table.fields) {
        Type type = Type::Unknown;
        switch (field.type) {
            case JetType::Boolean:
                type = Type::Boolean;
                break;
            case JetType::Byte:
            case JetType::Int:
            case JetType::Long:
                type = Type::Integer;
                break;
            case JetType::Money:
                type = Type::Money;
                break;
            case JetType::Float:
            case JetType::Double:
                type = Type::Double;
                break;
            case JetType::Date:
                type = Type::Date;
                break;
            case JetType::Text:
            case JetType::Memo:
                type = Type::Text;
                break;
            default:
                break;
        }
        told.columns.push_back({field.name, type});
    }
    for (const quint32 number : pagesOf(table.usageMap)) {
        try {
            const QByteArray bytes = page(number);
            if (bytes[0] != kDataPage || at<quint32>(bytes, 4) != table.page) continue;
            for (const Slot& slot : slotsOf(bytes)) {
                if (slot.deleted) continue;
                if (qint64(told.rows.size()) * qint64(told.columns.size()) > kMostCells) return told;
                QByteArray row = bytes.mid(slot.from, slot.to - slot.from);
                if (slot.moved) row = rowAt(at<quint32>(row, 0));
                if (!readRow(row, table, told)) ++told.unreadable;
            }
        } catch (const store::Error&) {
            ++told.unreadable;  // the page's other rows are missing from the count that is stated
        }
    }
    return told;
}

/// False, and no row, when it does not hold together.
bool JetFile::readRow(const QByteArray& row, const Definition& table, Rows& into) const {
    try {
        const int columns = at<quint16>(row, 0);
        const qsizetype bitmap = row.size() - (columns + 7) / 8;
        const int variables = bitmap >= 4 ? at<quint16>(row, bitmap - 2) : 0;
        const auto offset = [&](int i) { return int(at<quint16>(row, bitmap - 4 - 2 * qsizetype(i))); };
        std::vector<store::Value> cells;
        for (const Field& field : table.fields) {
            const bool known = field.number < columns;
            const bool present =
                known && (at<quint8>(row, bitmap + field.number / 8) >> (field.number % 8) & 1);
            if (field.type == JetType::Boolean) {
                cells.emplace_back(present);
            } else if (!present || (!field.fixed && field.variable >= variables)) {
                cells.emplace_back();
            } else {
                const QByteArray bytes = field.fixed
                                             ? part(row, 2 + field.offset, field.length)
                                             : part(row, offset(field.variable),
                                                    offset(field.variable + 1) - offset(field.variable));
                cells.push_back(cell(field, bytes, into));
            }
        }
        into.rows.push_back(std::move(cells));
        return true;
    } catch (const store::Error&) {
        return false;
    }
}

store::Value JetFile::cell(const Field& field, const QByteArray& bytes, Rows& told) const {
    try {
        switch (field.type) {
            case JetType::Byte:
                return qint64(at<quint8>(bytes, 0));
            case JetType::Int:
                return qint64(at<qint16>(bytes, 0));
            case JetType::Long:
                return qint64(at<qint32>(bytes, 0));
            case JetType::Money:
                return store::Money::fromRaw(at<qint64>(bytes, 0));
            case JetType::Float:
            case JetType::Double: {
                const double value = field.type == JetType::Float
                                         ? double(std::bit_cast<float>(at<quint32>(bytes, 0)))
                                         : std::bit_cast<double>(at<quint64>(bytes, 0));
                if (!std::isfinite(value)) throwDamaged(u"数値が壊れています。"_s);
                return value;
            }
            case JetType::Date: {
                constexpr double kLast = 2958465;  // 9999/12/31
                const auto days = std::bit_cast<double>(at<quint64>(bytes, 0));
                if (!(days > -657435 && days < kLast + 1)) throwDamaged(u"日付が壊れています。"_s);
                if (days != std::trunc(days)) ++told.dayTimes;
                return QDate(1899, 12, 30).addDays(qint64(std::trunc(days)));
            }
            case JetType::Text:
                return textOf(bytes);
            case JetType::Memo:
                return textOf(longValue(bytes));
            default:
                return {};
        }
    } catch (const store::Error&) {
        ++told.unreadable;
        return {};
    }
}

QByteArray JetFile::longValue(const QByteArray& head) const {
    const quint32 word = at<quint32>(head, 0), length = word & 0x3FFFFFFF;
    if (word & 0x80000000U) return part(head, 12, length);
    if (length > quint32(file_.size())) throwDamaged(u"文字列が壊れています。"_s);
    quint32 pointer = at<quint32>(head, 4);
    if (word & 0x40000000U) return part(rowAt(pointer), 0, length);
    QByteArray text;
    QSet<quint32> seen;
    while (pointer != 0) {
        if (seen.contains(pointer) || text.size() > qsizetype(length))
            throwDamaged(u"文字列が壊れています。"_s);
        seen << pointer;
        const QByteArray row = rowAt(pointer);
        pointer = at<quint32>(row, 0);
        text += row.mid(4);
    }
    return part(text, 0, length);
}

}  // namespace company
