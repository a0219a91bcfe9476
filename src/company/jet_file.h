#pragma once
#include <QByteArray>
#include <QString>
#include <QStringList>
#include <vector>

#include "store/value.h"

/// Reads a Jet 4 database file, and never writes one. A file from outside is not trusted: every read is
/// within the file, no chain is walked twice, and what does not hold together is told instead of shown.
namespace company {

class JetFile {
  public:
    enum class Type { Boolean, Integer, Money, Double, Date, Text, Unknown };
    struct Column {
        QString name;
        Type type = Type::Unknown;
    };
    struct Rows {
        std::vector<Column> columns;  ///< in the order of their making
        /// A cell that could not be read, or whose type has no counterpart here (pictures), is Null.
        std::vector<std::vector<store::Value>> rows;
        qint64 stated = 0;      ///< rows that the file says it has
        qint64 unreadable = 0;  ///< cells that are damaged
        qint64 dayTimes = 0;    ///< dates with a time of the day, which is dropped
        bool whole() const { return stated == qint64(rows.size()) && unreadable == 0; }
    };

    /// Reads the file. Throws store::Error when it is no Jet 4 file, is damaged at its root, is larger than
    /// the format allows, or carries another password.
    JetFile(const QString& path, const QString& password);

    /// The user's own tables, in the order of the catalogue; links to other files are none.
    QStringList tables() const;
    /// All rows of a table. Throws store::Error(Damaged) where even its definition can't be read.
    Rows read(const QString& table) const;

  private:
    struct Definition;
    struct Field;
    QByteArray page(quint32 number) const;
    Definition define(quint32 page) const;
    Rows rowsOf(const Definition& table) const;
    std::vector<quint32> pagesOf(quint32 usageMap) const;
    QByteArray rowAt(quint32 pointer) const;
    bool readRow(const QByteArray& row, const Definition& table, Rows& into) const;
    store::Value cell(const Field& field, const QByteArray& bytes, Rows& told) const;
    QByteArray longValue(const QByteArray& head) const;

    QByteArray file_;
    quint32 pageCount_ = 0;
    quint32 pageKey_ = 0;
    QString name_;
    struct Entry {
        QString table;
        quint32 page;
    };
    std::vector<Entry> catalog_;
};

}  // namespace company
