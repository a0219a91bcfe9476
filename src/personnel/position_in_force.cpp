#include "personnel/position_in_force.h"

#include <QJsonArray>
#include <QJsonDocument>

#include "domain/years.h"
#include "store/work.h"

namespace personnel {
namespace {

store::Statement selectWhoCounts(store::Connection& cn, QDate kijunbi, WhoCounts who) {
    const QString leaving = who == WhoCounts::EmployedAtDate
                                ? QStringLiteral(" OR (退職フラグ <> 0 AND 退職日 >= ?)")
                                : QString();
    store::Statement people = cn.prepare(
        QStringLiteral("SELECT 社員Code,生年月日,入社日 FROM 履歴書テーブル WHERE 退職フラグ = 0") + leaving +
        QStringLiteral(" ORDER BY rowid"));
    if (!leaving.isEmpty()) people.bind(1, store::Value(kijunbi));
    return people;
}

void fillNen(store::Connection& cn, const PositionDates& dates, WhoCounts who) {
    cn.execute(QStringLiteral("DELETE FROM IdoChuusyutsuNen"));
    store::Statement people = selectWhoCounts(cn, dates.kijunbi, who);
    store::Statement insert =
        cn.prepare(QStringLiteral("INSERT INTO IdoChuusyutsuNen(社員Code,生年月日,入社日,年齢算出年月日,"
                                  "勤続年数算出年月日,年齢,勤続年数) VALUES(?,?,?,?,?,?,?)"));
    insert.bind(4, store::Value(dates.nenrei_kijunbi)).bind(5, store::Value(dates.kinzoku_kijunbi));
    while (people.step()) {
        const QDate born = people.toDate(1);
        const QDate joined = people.toDate(2);
        insert.bind(1, people.value(0)).bind(2, store::Value(born)).bind(3, store::Value(joined));
        insert.bind(6, qint64{domain::wholeYears(born, dates.nenrei_kijunbi)});
        insert.bind(7, qint64{domain::wholeYears(joined, dates.kinzoku_kijunbi)});
        insert.run();
    }
}

const QString kLatest = QStringLiteral(
    "INSERT INTO IdoChuusyutsuMax SELECT 社員Code,MAX(異動日) AS MAXIdoubi "
    "FROM 異動テーブル WHERE %1異動日 <= ? GROUP BY 社員Code ORDER BY 社員Code");

void fillMax(store::Connection& cn, QDate kijunbi) {
    cn.execute(QStringLiteral("DELETE FROM IdoChuusyutsuMax"));
    cn.execute(kLatest.arg(QString()), {kijunbi});
}

void fillMaxOf(store::Connection& cn, const QStringList& codes, QDate kijunbi) {
    cn.execute(QStringLiteral("DELETE FROM IdoChuusyutsuMax"));
    cn.execute(kLatest.arg(QStringLiteral("社員Code IN (SELECT value FROM json_each(?)) AND ")),
               {jsonArray(codes), kijunbi});
}

/// Ages and tenure with it, names without. IdoChuusyutsuMax stands in the order of 社員Code: joined from it
/// in this order, nothing needs sorting.
void fillMax2(store::Connection& cn) {
    cn.execute(QStringLiteral("DELETE FROM IdoChuusyutsuMax2"));
    cn.execute(QStringLiteral(
        "INSERT INTO "
        "IdoChuusyutsuMax2(社員Code,MAXIdoubi,社員区分,所属大,所属小,役職,職種,コース,年齢,勤続年数,"
        "等級,号俸,評語) "
        "SELECT M.社員Code,M.MAXIdoubi,I.社員区分,I.所属大,I.所属小,I.役職,I.職種,I.コース,N.年齢,N.勤続年数,"
        "I.等級,I.号俸,I.評語 "
        "FROM IdoChuusyutsuMax AS M "
        "CROSS JOIN 異動テーブル AS I ON I.社員Code = M.社員Code AND I.異動日 = M.MAXIdoubi "
        "CROSS JOIN IdoChuusyutsuNen AS N ON N.社員Code = I.社員Code "
        "ORDER BY M.rowid,I.rowid"));
}

/// Names with it, ages and tenure without. Of several master rows of one code the first counts; that is also
/// how a 所属小 is named, by its code alone.
void fillMax2WithNames(store::Connection& cn) {
    QStringList codes, nameColumns, names, masters;
    for (const char16_t* kind : {u"社員区分", u"所属大", u"所属小", u"役職", u"職種", u"コース"}) {
        const QString name = QString::fromUtf16(kind);
        codes << QStringLiteral("I.") + name;
        nameColumns << name + u'名';
        names << QStringLiteral("%1表.%1").arg(name);
        masters << QStringLiteral(
                       " LEFT JOIN (SELECT Code,%1,MIN(rowid) FROM %1マスタ GROUP BY Code) AS %1表 "
                       "ON %1表.Code = I.%1")
                       .arg(name);
    }
    cn.execute(QStringLiteral("DELETE FROM IdoChuusyutsuMax2"));
    cn.execute(
        QStringLiteral("INSERT INTO IdoChuusyutsuMax2(社員Code,MAXIdoubi,社員区分,所属大,所属小,役職,職種,"
                       "コース,等級,号俸,評語,%1) "
                       "SELECT M.社員Code,M.MAXIdoubi,%2,I.等級,I.号俸,I.評語,%3 "
                       "FROM IdoChuusyutsuMax AS M "
                       "INNER JOIN 異動テーブル AS I ON I.社員Code = M.社員Code AND I.異動日 = M.MAXIdoubi"
                       "%4 ORDER BY M.社員Code,I.rowid")
            .arg(nameColumns.join(u','), codes.join(u','), names.join(u','), masters.join(QString())));
}

}  // namespace

QString jsonArray(const QStringList& texts) {
    return QString::fromUtf8(QJsonDocument(QJsonArray::fromStringList(texts)).toJson(QJsonDocument::Compact));
}

void SelectIntoY(store::Connection& cn, const PositionDates& dates, WhoCounts who) {
    store::Work work(cn);
    fillNen(cn, dates, who);
    work.commit();
}

void SelectIntoX(store::Connection& cn, const PositionDates& dates, WhoCounts who) {
    store::Work work(cn);
    fillNen(cn, dates, who);
    fillMax(cn, dates.kijunbi);
    fillMax2(cn);
    work.commit();
}

void SelectIntoZ(store::Connection& cn, const QStringList& codes, QDate kijunbi) {
    store::Work work(cn);
    fillMaxOf(cn, codes, kijunbi);
    fillMax2WithNames(cn);
    work.commit();
}

void SelectIntoZZ(store::Connection& cn, const QString& code, QDate kijunbi) {
    SelectIntoZ(cn, {code}, kijunbi);
}

}  // namespace personnel
