#include "prep/pasted_people.h"

#include <QHash>
#include <QSet>

#include "store/half_width.h"

namespace prep {
namespace {

using Fate = PastedPerson::Fate;

QList<QStringList> linesOf(QString text) {
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
    QList<QStringList> lines;
    for (const QString& line : text.split(u'\n'))
        if (!line.trimmed().isEmpty()) lines << line.split(u'\t');
    return lines;
}

struct Columns {
    qsizetype code = 0, value = -1;  ///< -1: the last one
    bool headed = false;
};

Columns columnsOf(const QStringList& first, const QString& heading) {
    Columns columns;
    for (qsizetype i = 0; i < first.size(); ++i) {
        const QString cell = first[i].normalized(QString::NormalizationForm_KC).trimmed();
        if (cell == QStringLiteral("社員コード") ||
            cell.compare(QStringLiteral("社員Code"), Qt::CaseInsensitive) == 0) {
            columns.code = i;
            columns.headed = true;
        }
        if (cell == heading) columns.value = i;
    }
    if (!columns.headed) columns.value = -1;
    return columns;
}

std::optional<qint64> codeNumber(const QString& code) {
    bool number = false;
    const qint64 value = store::halfWidth(code).trimmed().toLongLong(&number);
    return number ? std::optional(value) : std::nullopt;
}

QHash<qint64, int> placesOf(const std::vector<InputRow>& rows) {
    QHash<qint64, int> places;
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (const auto number = codeNumber(rows[i].syainCode)) places.insert(*number, static_cast<int>(i));
    return places;
}

/// What becomes of the value for an employee of the grid.
void judge(PastedPerson& person, const InputRow& row, const CellRules& rules) {
    person.syainCode = row.syainCode;
    person.shimei = row.shimei;
    person.before = row.text;
    person.why = rules.fault(person.text);
    person.fate = !person.why.isEmpty()                              ? Fate::Refused
                  : rules.differ(row.text, rules.typed(person.text)) ? Fate::Changes
                                                                     : Fate::Same;
    if (person.why.isEmpty()) person.text = rules.typed(person.text);
}

}  // namespace

std::optional<std::vector<PastedPerson>> readPastedPeople(const QString& clipboard,
                                                          const std::vector<InputRow>& rows,
                                                          const CellRules& rules) {
    const QList<QStringList> lines = linesOf(clipboard);
    if (lines.isEmpty() || lines.front().size() < 2) return {};
    const Columns columns = columnsOf(lines.front(), rules.heading);
    const QHash<qint64, int> places = placesOf(rows);
    QSet<int> taken;
    std::vector<PastedPerson> people;
    for (qsizetype i = columns.headed ? 1 : 0; i < lines.size(); ++i) {
        const QStringList& cells = lines[i];
        PastedPerson& person = people.emplace_back();
        person.syainCode = cells.value(columns.code).trimmed();
        person.text = columns.value < 0 ? cells.back() : cells.value(columns.value);
        const auto number = codeNumber(person.syainCode);
        person.row = number ? places.value(*number, -1) : -1;
        if (person.row < 0) continue;
        judge(person, rows[static_cast<std::size_t>(person.row)], rules);
        if (taken.contains(person.row)) {
            person.fate = Fate::Refused;
            person.why = QStringLiteral("同じ社員コードが2回あります。");
        }
        taken.insert(person.row);
    }
    return people;
}

}  // namespace prep
