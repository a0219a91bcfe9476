#include "prep/pasted_people.h"

#include <QHash>
#include <QSet>
#include <algorithm>

#include "store/half_width.h"

namespace prep {
namespace {

using Fate = PastedPerson::Fate;

/// Without the blank lines.
QList<QStringList> linesOf(const QString& clipboard) {
    QList<QStringList> lines = domain::pastedCells(clipboard);
    lines.removeIf([](const QStringList& cells) { return cells.join(QString()).trimmed().isEmpty(); });
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
    if (!columns.headed)
        columns.value = -1;
    else if (columns.value < 0 && first.size() == 2)
        columns.value = 1 - columns.code;
    return columns;
}

/// A code as spreadsheets leave it: half-width, without its zeros. Empty for what is no number.
QString plainCode(const QString& code) {
    bool number = false;
    const qint64 value = store::halfWidth(code).trimmed().toLongLong(&number);
    return number ? QString::number(value) : QString();
}

/// The rows of the grid by their codes: as they stand and plain.
class Places {
  public:
    explicit Places(const std::vector<InputRow>& rows) {
        for (std::size_t i = 0; i < rows.size(); ++i) {
            exact_.insert(rows[i].syainCode, static_cast<int>(i));
            plain_.insert(plainCode(rows[i].syainCode), static_cast<int>(i));
        }
    }
    /// The rows that a pasted code may mean: "0009" beside "009" is meant only as it stands.
    QList<int> of(const QString& code) const {
        if (const auto row = exact_.constFind(code); row != exact_.cend()) return {*row};
        const QString plain = plainCode(code);
        return plain.isEmpty() ? QList<int>() : plain_.values(plain);
    }

  private:
    QHash<QString, int> exact_;
    QMultiHash<QString, int> plain_;
};

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

/// What asks for a look stands first, the rest as it was pasted.
int attention(Fate fate) {
    return fate == Fate::Refused ? 0 : fate == Fate::Nobody ? 1 : 2;
}

}  // namespace

std::optional<std::vector<PastedPerson>> readPastedPeople(const QString& clipboard,
                                                          const std::vector<InputRow>& rows,
                                                          const CellRules& rules) {
    const QList<QStringList> lines = linesOf(clipboard);
    if (lines.isEmpty() || lines.front().size() < 2) return {};
    const Columns columns = columnsOf(lines.front(), rules.heading);
    const Places places(rows);
    QSet<int> taken;
    std::vector<PastedPerson> people;
    for (qsizetype i = columns.headed ? 1 : 0; i < lines.size(); ++i) {
        const QStringList& cells = lines[i];
        PastedPerson& person = people.emplace_back();
        person.syainCode = cells.value(columns.code).trimmed();
        person.text = columns.value < 0 ? cells.back() : cells.value(columns.value);
        const QList<int> meant = places.of(person.syainCode);
        const auto refuse = [&person](const QString& why) {
            person.fate = Fate::Refused;
            person.why = why;
        };
        if (columns.headed && columns.value < 0 && lines.front().size() > 2) {
            person.text.clear();
            refuse(QStringLiteral("どの列が値か分かりません。見出しを「%1」にしてください。")
                       .arg(rules.heading));
        } else if (cells.size() != lines.front().size()) {
            person.text.clear();
            refuse(QStringLiteral("列の数が、先頭の行と違います。"));
        } else if (meant.size() > 1) {
            refuse(QStringLiteral("社員コードが一人に決まりません。"));
        } else if (!meant.isEmpty()) {
            person.row = meant.front();
            judge(person, rows[static_cast<std::size_t>(person.row)], rules);
            if (taken.contains(person.row)) refuse(QStringLiteral("同じ社員コードが2回あります。"));
            taken.insert(person.row);
        }
    }
    std::stable_sort(people.begin(), people.end(),
                     [](const auto& a, const auto& b) { return attention(a.fate) < attention(b.fate); });
    return people;
}

}  // namespace prep
