#pragma once
#include <set>

#include "design/criteria.h"
#include "domain/run_key.h"
#include "store/connection.h"

/// Automatic input: fills what the design set-up of a criterion declares automatic, for all employees of a
/// run.
namespace prep {

/// The items that had automatic input, as positions of S実行自動入力判定.
using AutoItems = std::set<int>;

/// Fills base amounts, coefficients and (個人別計算 only) 支給係数 of the run's rows and leaves ○ (value set)
/// or × (no value found) per employee and item in S実行自動入力判定, which holds the last such run only. What
/// is typed in stays untouched, and its judgment empty. Rebuilds IdoChuusyutsuMax3 first.
/// `houshiki` is Kojinbetsu or Sougaku. Runs in the caller's transaction: after store::Error the caller rolls
/// back.
AutoItems autoInput(store::Connection& cn, const domain::RunKey& run, design::Houshiki houshiki);

/// The list of judgments of the last run: 社員Code, 氏名, then the items in the order of S実行自動入力判定
/// (出勤係数 among them, always empty), for the employees who have a record, in the order of their numbers.
store::Recordset judgmentRows(store::Connection& cn);

/// A column of the printed list: one of the 17 items that can be automatic.
struct JudgmentColumn {
    QString column;  ///< of judgmentRows; empty when the item was not automatic: nothing is printed then
    QString heading;  ///< the company's own name of the coefficient, or 基礎額Ａ, 基礎額Ｂ, 支給係数
};
/// The columns from 基礎額Ａ to 支給係数, without 出勤係数.
std::vector<JudgmentColumn> judgmentColumns(store::Connection& cn, const AutoItems& items);

}  // namespace prep
