#include "domain/years.h"

namespace domain {

int wholeYears(QDate from, QDate to) {
    // Counting the days on from the month's first makes 29 February roll into 1 March in a common year.
    const QDate anniversary = QDate(to.year(), from.month(), 1).addDays(from.day() - 1);
    const int years = to.year() - from.year();
    return anniversary > to ? years - 1 : years;
}

QString nenrei_nensuu(QDate d1, QDate d2) {
    return QString::number(wholeYears(d1, d2));
}

QString kinzoku_nensuu(QDate d1, QDate d2) {
    return QString::number(wholeYears(d1, d2));
}

}  // namespace domain
