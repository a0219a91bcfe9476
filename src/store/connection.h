#pragma once
#include <QString>
#include <QStringList>
#include <memory>
#include <string>
#include <vector>

#include "store/error.h"
#include "store/key.h"
#include "store/recordset.h"
#include "store/statement.h"
#include "store/value.h"

struct sqlite3;

namespace store {

/// A connection to one database file and the files attached to it. Rollback journal, synchronous FULL: one
/// transaction covers all attached files, a crash leaves all of them before or all of them after. One thread;
/// not copyable; outlives its statements, works and row edits (rows need it no longer). Every failure throws
/// store::Error with a text for the user.
class Connection {
  public:
    enum class Mode { ReadWrite, ReadOnly, Create };

    /// Opens `path`, keyed with `key`. Only Mode::Create makes a missing file. Reads the schema once,
    /// so a wrong key, a truncated file or no database at all is told here (Error NotOpen or Damaged).
    Connection(const QString& path, const Key& key, Mode mode = Mode::ReadWrite);
    ~Connection();  ///< rolls back an open transaction and closes
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Makes the tables of another file with the same key visible under their own names. The file must exist.
    void attach(const QString& path, const QString& schema);

    /// Runs one statement to its end; the number of rows changed. Values travel as `binds` only. A write
    /// outside of any transaction is told as commitTrans() tells it.
    int execute(const QString& sql, const Binds& binds = {});
    /// Runs a fixed script of several statements without values.
    void executeScript(const QString& sql);
    Statement prepare(const QString& sql);
    Recordset query(const QString& sql, const Binds& binds = {});
    /// Rows of one table that a RowEdit may start from: "select * from <table> where <where> order by
    /// <orderBy>".
    Recordset open(const TableQuery& query);

    /// How a transaction (store::Work) takes hold of the files.
    enum class Reserve {
        AllFiles,   ///< every attached file, from the beginning
        AsWritten,  ///< each file when it is first written: the others stay open to connections of their own
    };
    bool inTransaction() const;

    bool hasTable(const QString& table) const;        ///< in any of the files
    QStringList tables(const QString& schema) const;  ///< "main" or an attached name, in stored order
    QStringList schemas() const;                    ///< "main" and the attached names, in order of attaching
    QString filePath(const QString& schema) const;  ///< the file behind a schema
    QString path() const { return path_; }
    const Key& key() const { return key_; }

    sqlite3* handle() const { return db_; }

  private:
    void beginTrans(Reserve reserve);
    /// Returns when the transaction stands. An error at the very end of a commit comes when everything is
    /// written already: then this returns too. Throws while the transaction is open or was rolled back, and
    /// Error(CommitUnknown) where the files can't be read to find out.
    void commitTrans();
    void rollbackTrans();
    void open(const QString& path, Mode mode);
    void verify(const QString& schema, const QString& path);
    /// What the files show of changes, to tell by and by whether one more stands.
    struct Changes {
        std::vector<quint32> counters;
        QStringList journals;
    };
    Changes changes() const;
    /// Behind a failure in which the engine ended the transaction: returns when it stands all the same,
    /// throws the error or Error(CommitUnknown) otherwise.
    void requireStands(const Changes& before, const Error& error);
    std::vector<quint32> changeCounters() const;
    QStringList commonJournals() const;
    bool settle();
    Error errorOf(int code) const;
    [[noreturn]] void fail(int code) const;
    friend class Statement;
    friend class Work;
    QString path_;
    Key key_;
    int works_ = 0;  ///< open works
    sqlite3* db_ = nullptr;
};

/// The engine's error code as an Error with a Japanese text; `description` is the engine's own English one,
/// kept in brackets behind ours.
Error engineError(int code, const QString& description);

}  // namespace store
