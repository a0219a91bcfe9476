#include "store/date_text.h"

#include <QRegularExpression>
#include <array>

#include "store/error.h"
#include "store/half_width.h"

namespace store {
namespace {

struct Era {
    const char16_t* name = nullptr;
    char16_t letter = 0;
    QDate first;
    QDate last;
};

/// A day on which the era changed belongs to the new one.
const std::array<Era, 5>& eras() {
    static const std::array<Era, 5> table{{
        {u"明治", u'M', QDate(1868, 1, 25), QDate(1912, 7, 29)},
        {u"大正", u'T', QDate(1912, 7, 30), QDate(1926, 12, 24)},
        {u"昭和", u'S', QDate(1926, 12, 25), QDate(1989, 1, 7)},
        {u"平成", u'H', QDate(1989, 1, 8), QDate(2019, 4, 30)},
        {u"令和", u'R', QDate(2019, 5, 1), QDate(9999, 12, 31)},
    }};
    return table;
}

/// As it would be typed with the input method off. In kana input the keys of slash, full stop and minus give
/// the signs of Japanese text.
QString normalised(const QString& text) {
    QString result = store::halfWidth(text).trimmed().toUpper();
    result.replace(u'・', u'/').replace(u'。', u'.').replace(u'ー', u'-').replace(u'−', u'-');
    return result;
}

std::optional<QDate> checked(int year, int month, int day) {
    const QDate date(year, month, day);
    if (!date.isValid() || year < 100) return std::nullopt;
    return date;
}

std::optional<QDate> inEra(const QString& era, int year, int month, int day) {
    for (const Era& e : eras()) {
        if (era != QStringView(e.name) && era != QString(QChar(e.letter))) continue;
        const auto date = checked(e.first.year() + year - 1, month, day);
        if (year < 1 || !date || *date < e.first || *date > e.last) return std::nullopt;
        return date;
    }
    return std::nullopt;
}

}  // namespace

std::optional<QDate> parseDate(const QString& text) {
    static const QRegularExpression western(QStringLiteral(
        "^(?:([0-9]{4})([/-])([0-9]{1,2})\\2([0-9]{1,2})|([0-9]{4})年([0-9]{1,2})月([0-9]{1,2})日)$"));
    static const QRegularExpression japanese(
        QStringLiteral("^(?:([MTSHR])([0-9]{1,2})([./-])([0-9]{1,2})\\3([0-9]{1,2})"
                       "|(明治|大正|昭和|平成|令和)([0-9]{1,2}|元)年([0-9]{1,2})月([0-9]{1,2})日)$"));
    const QString plain = normalised(text);
    if (const auto m = western.match(plain); m.hasMatch()) {
        const bool separated = m.hasCaptured(1);
        return checked(m.captured(separated ? 1 : 5).toInt(), m.captured(separated ? 3 : 6).toInt(),
                       m.captured(separated ? 4 : 7).toInt());
    }
    const auto m = japanese.match(plain);
    if (!m.hasMatch()) return std::nullopt;
    if (m.hasCaptured(1))
        return inEra(m.captured(1), m.captured(2).toInt(), m.captured(4).toInt(), m.captured(5).toInt());
    const int year = m.captured(7) == u"元" ? 1 : m.captured(7).toInt();
    return inEra(m.captured(6), year, m.captured(8).toInt(), m.captured(9).toInt());
}

QDate requireDate(const QString& text) {
    const std::optional<QDate> date = parseDate(text);
    if (!date) throw Error(Error::Reason::Type, QString::fromUtf16(kDateText));
    return *date;
}

QDate requireStorable(QDate date) {
    if (date.year() < 100 || date.year() > 9999)
        throw Error(Error::Reason::Type, QString::fromUtf16(kDateText));
    return date;
}

QString formatDate(QDate date) {
    return date.isValid() ? QStringLiteral("%1/%2/%3")
                                .arg(date.year(), 4, 10, QChar(u'0'))
                                .arg(date.month())
                                .arg(date.day())
                          : QString();
}

QString formatLongDate(QDate date) {
    return date.isValid() ? QStringLiteral("%1年%2月%3日").arg(date.year()).arg(date.month()).arg(date.day())
                          : QString();
}

}  // namespace store
