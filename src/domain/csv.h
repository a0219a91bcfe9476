#pragma once
#include <QByteArray>
#include <QString>
#include <QStringList>
#include <vector>

/// Tables as text: cells separated by commas, a cell with a comma, a quote or a line's end in double quotes.
namespace domain {

struct CsvRow {
    int line = 0;  ///< of the file where the row begins, from 1
    QStringList cells;
};

/// The rows of a text, blank ones left out; cells come without the blanks around them. Lines end with CR LF,
/// LF or CR. Throws Error(Type) for a quote that is never closed.
std::vector<CsvRow> parseCsv(const QString& text);

/// One line with its end, for a file that parseCsv reads back.
QString csvLine(const QStringList& cells);

}  // namespace domain
