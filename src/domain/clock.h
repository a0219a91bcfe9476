#pragma once
#include <QDate>
#include <functional>

namespace domain {

/// Where "today" comes from; a test sets its own.
using Clock = std::function<QDate()>;
inline Clock systemClock() {
    return [] { return QDate::currentDate(); };
}

}  // namespace domain
