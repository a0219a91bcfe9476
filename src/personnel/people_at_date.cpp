#include "personnel/people_at_date.h"

#include "domain/years.h"

namespace personnel {
namespace {

/// The names of a code list; its second column bears the name of the kind.
QHash<QString, QString> namesOf(store::Connection& cn, const QString& kind) {
    auto row = cn.prepare(QStringLiteral("SELECT Code, %1 FROM %1マスタ").arg(kind));
    QHash<QString, QString> names;
    while (row.step()) names.insert(row.toText(0), row.toText(1));
    return names;
}

QHash<QString, PersonAt> agesAt(store::Connection& cn, QDate ageDate) {
    auto row = cn.prepare(QStringLiteral("SELECT 社員Code, 生年月日 FROM 履歴書テーブル"));
    QHash<QString, PersonAt> people;
    while (row.step()) {
        PersonAt& person = people[row.toText(0)];
        if (!row.isNull(1)) person.age = domain::wholeYears(row.toDate(1), ageDate);
    }
    return people;
}

}  // namespace

QHash<QString, PersonAt> peopleAt(store::Connection& cn, QDate date, QDate ageDate) {
    QHash<QString, PersonAt> people = agesAt(cn, ageDate);
    const auto tokyu = namesOf(cn, QStringLiteral("等級"));
    const auto syozoku = namesOf(cn, QStringLiteral("所属大"));
    const auto yakusyoku = namesOf(cn, QStringLiteral("役職"));
    auto row =
        cn.prepare(QStringLiteral("SELECT 社員Code, 異動日, 等級, 所属大, 役職 FROM 異動テーブル"
                                  " WHERE 異動日 <= ? ORDER BY 異動日, rowid"));
    row.bind(1, date);
    QHash<QString, QDate> latest;
    while (row.step()) {
        const auto person = people.find(row.toText(0));
        QDate& inForce = latest[row.toText(0)];
        if (person == people.end() || inForce == row.toDate(1)) continue;
        inForce = row.toDate(1);
        const auto post = [&](int column, const QHash<QString, QString>& names) {
            return Post{row.toText(column), names.value(row.toText(column))};
        };
        person->tokyu = post(2, tokyu);
        person->syozoku = post(3, syozoku);
        person->yakusyoku = post(4, yakusyoku);
    }
    return people;
}

}  // namespace personnel
