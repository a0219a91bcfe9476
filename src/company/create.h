#pragma once
#include <QString>

namespace company {

/// Which of the companions' files a new company gets besides 基本db and 賞与db.
struct CompanionFiles {
    bool chingin = false;
    bool hyouka = false;
};

/// Creates the folder and the files of a new company with all their tables, the fixed masters, one row of
/// 入力可・不可テーブル (all True), one row of 会社テーブル and the link table. Throws store::Error when the
/// folder exists; leaves nothing behind when it fails.
void createCompany(const QString& dataDir, const QString& company, CompanionFiles companions);

}  // namespace company
