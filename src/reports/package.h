#pragma once
#include <QByteArray>
#include <QByteArrayList>
#include <QHash>
#include <QString>

namespace reports {

/// A spreadsheet file as it stands on the disk: a package of compressed XML parts. Reading one throws
/// Error(Damaged) when it is cut or changed.
class Package {
  public:
    explicit Package(const QString& path);

    QByteArrayList partNames() const { return entries_.keys(); }
    /// The content of a part ("xl/worksheets/sheet1.xml"), its length and checksum verified.
    QByteArray part(const QByteArray& name) const;

    /// Reads every part to its end: each must be a closed XML document. The writer's own temporary files are
    /// not checked by it, so a full disk there shows only in parts that break off.
    void requireWhole() const;

  private:
    struct Entry {
        quint32 method;
        quint32 checksum;
        quint32 packedSize;
        quint32 size;
        quint32 offset;
    };
    quint32 number(qsizetype offset, int bytes) const;
    QByteArray bytes_;
    QHash<QByteArray, Entry> entries_;
};

}  // namespace reports
