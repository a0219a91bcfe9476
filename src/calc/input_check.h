#pragma once
#include <QString>
#include <QStringList>
#include <vector>

#include "design/criteria.h"
#include "domain/run_key.h"
#include "reports/workbook.h"
#include "store/connection.h"

/// 基礎額・係数の入力状況チェック: what stands in a run's tables, one line per employee, with exactly those
/// base amounts and coefficients that the criterion uses under one 算定方式. Changes no allocation data.
namespace calc {

/// A base amount or coefficient in use.
struct CheckColumn {
    QString name;         ///< its column of the scratch table SJCheck
    QString source;       ///< its column of the run's table
    QString heading;      ///< the company's own name of it
    bool amount = false;  ///< shown as "#,##0", a coefficient as "0.000"
};

/// The columns in use in their fixed order: base A, base B, then the 18 kinds of coefficient. A base is in
/// use when any coefficient is set on it, a coefficient when it has a row at all, be it set on neither base.
/// A coefficient without a name of its own is headed by its column. In SJCheck the twelfth kind alone bears
/// the company's name followed by 係数, unless another column has that name already.
std::vector<CheckColumn> checkColumns(store::Connection& cn, const domain::RunKey& run,
                                      design::Houshiki method);

/// The whole check of a run under Houshiki::Kojinbetsu or Houshiki::Sougaku, sent by way of the scratch
/// tables SJCheck and SJCheck2 in a transaction of its own. Who has no row in 履歴書テーブル is left out;
/// what is not there (支給係数 before the first calculation, a Null) is an empty cell. Throws store::Error
/// for a 社員Code that is no number.
reports::SheetGrid inputCheckSheet(store::Connection& cn, const domain::RunKey& run, design::Houshiki method,
                                   const QString& kubunMei, const QString& kijunMei);

}  // namespace calc
