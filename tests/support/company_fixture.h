#pragma once
#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <memory>

#include "company/create.h"
#include "sample_company.h"
#include "schema/files.h"
#include "store/connection.h"

namespace support {

/// A program folder with its Data folder in a temporary place, gone with the object.
class CompanyFolder {
  public:
    CompanyFolder();

    /// Puts the sample company into Data (options.dataDir is ours). A company is made once a process for each
    /// set of options and copied from then on.
    void makeSample(sample::SampleOptions options = {});
    /// A new company as the program makes it: tables, fixed masters, no people.
    void makeEmpty(const QString& company = QStringLiteral("新会社"),
                   company::CompanionFiles companions = {});
    /// The empty file zukanzen.exe in the program's folder: the wage companion counts as installed.
    void addCompanionMarker() const;

    QString programDir() const { return root_.path(); }
    QString dataDir() const { return root_.filePath(QStringLiteral("Data")); }
    QString company() const { return company_; }
    QString companyDir() const { return dataDir() + u'/' + company_; }
    QString file(schema::File file) const { return schema::filePath(dataDir(), company_, file); }

    /// The main connection; the links point into this folder.
    std::unique_ptr<store::Connection> open() const;

    /// dump() of all files that stand. No other connection may hold them for writing.
    QByteArray fingerprint() const;

  private:
    QTemporaryDir root_;
    QString company_;
};

/// Every table of every file of the connection as text, one line a row in stored order; the link table, which
/// holds paths, left out. Two dumps are equal when the data are.
QByteArray dump(store::Connection& connection);
/// The rows of a query, one text each: cells between bars as the screens show them, Null as a dash.
QStringList textRows(store::Connection& connection, const QString& query, const store::Binds& binds = {});
/// The first line in which two dumps differ, for a test's message; empty when they are equal.
QByteArray firstDifference(const QByteArray& before, const QByteArray& after);

}  // namespace support
