#pragma once
#include <QDate>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

#include "company/key.h"

namespace company {

/// Which files a new company gets besides 基本db and 賞与db.
struct CompanionFiles {
    bool chingin = false;
    bool hyouka = false;
    bool others = false;  ///< Hydcdb and Compdb, which this program only keeps and compacts
};

/// What a new company begins with.
struct NewCompany {
    QString name;  ///< companyNameFault() finds nothing wrong with it
    CompanionFiles companions = {};
    QStringList profile = {};  ///< 会社テーブル in its order; an attribute without a name is "未設定"
    QStringList unusedItems = {};       ///< columns of 入力可・不可テーブル for what is not entered
    QStringList masters = {};           ///< tables that begin with the usual entries (masterTemplates)
    QDate since = {};                   ///< from when on these may be chosen
    QString password = {};              ///< asked before it opens; empty: nobody is asked
    std::optional<OwnKey> ownKey = {};  ///< made from a password; locks the files in place of `password`
    /// What else comes into the files before the company is there; they stand in `folder` under its name.
    std::function<void(const QString& folder)> fill = {};
};

/// Creates the folder and the files of a new company with all their tables, the fixed masters, one row of
/// 入力可・不可テーブル (all True but for what is unused), one row of 会社テーブル and the link table. Throws
/// store::Error when the folder exists or the name is none; the company is there whole and durable, or not
/// at all.
void createCompany(const QString& dataDir, const NewCompany& company);
inline void createCompany(const QString& dataDir, const QString& company, CompanionFiles companions) {
    createCompany(dataDir, NewCompany{.name = company, .companions = companions});
}

}  // namespace company
