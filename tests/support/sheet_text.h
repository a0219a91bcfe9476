#pragma once
#include <QString>
#include <QStringList>

#include "reports/workbook.h"

namespace support {

/// The lines of a sheet from row 1 on, cells between bars. A number is told in full, with 円 or × for its
/// look, so that an amount that became a text does not pass for one.
inline QStringList sheetLines(const reports::SheetGrid& grid) {
    QStringList lines;
    for (const auto& [row, cells] : grid.rows()) {
        while (lines.size() < row - 1) lines << QString();
        QStringList texts;
        for (const auto& [column, cell] : cells) {
            while (texts.size() < column - 1) texts << QString();
            if (const auto* text = std::get_if<QString>(&cell)) {
                texts << *text;
            } else if (const auto* date = std::get_if<QDate>(&cell)) {
                texts << date->toString(Qt::ISODate);
            } else {
                const auto& number = std::get<reports::SheetGrid::Number>(cell);
                texts << QString::number(number.value, 'g', 15) +
                             (number.look == reports::NumberLook::Amount   ? QStringLiteral("円")
                              : number.look == reports::NumberLook::Factor ? QStringLiteral("×")
                                                                           : QString());
            }
        }
        lines << texts.join(u'|');
    }
    return lines;
}

}  // namespace support
