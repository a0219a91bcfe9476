#pragma once
#include <QDate>
#include <QSet>
#include <QString>
#include <QStringList>

#include "personnel/person_rules.h"
#include "store/connection.h"

/// What a field of a family member (家族テーブル) or of a qualification (資格・免許テーブル) may hold. As the
/// rules of an employee: texts in, the fault or nothing out.
namespace personnel {

/// Those of `items` (columns of 入力可・不可テーブル) that the company does not enter. Without a row all are
/// entered.
QSet<QString> itemsNotEntered(store::Connection& cn, const QStringList& items);

/// 氏名 or フリガナ of a family member: required, at most 20 bytes.
Finding checkKazokuText(const QString& column, const QString& text);
Finding checkZokugara(const QString& chosen);
Fault duplicateZokugara();
Finding checkKazokuSeinengappi(const QString& text, QDate today);

Finding checkShikaku(const QString& chosen);
Fault duplicateShikaku();
/// `seinengappi` is the employee's, as text; one that is no date is not compared with.
Finding checkSyutokubi(const QString& text, const QString& seinengappi);

}  // namespace personnel
