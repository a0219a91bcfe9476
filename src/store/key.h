#pragma once
#include <QByteArray>
#include <QString>

namespace store {

/// What opens the files of a company. It travels as this object from the place that knows it to the
/// connections, which pass it on to the files they attach; it is never shown, logged or compared with a
/// literal.
class Key {
  public:
    /// For a file that holds no data of anybody.
    static Key none() { return Key(QString()); }
    explicit Key(QString passphrase) : passphrase_(std::move(passphrase)) {}
    /// A key of 32 bytes that no passphrase stands for.
    static Key raw(const QByteArray& bytes) { return Key(rawMark() + QString::fromLatin1(bytes.toHex())); }
    /// As the engine takes it.
    const QString& passphrase() const { return passphrase_; }
    /// What a link to a file under it may tell: a raw key is told nobody.
    QString linkPassword() const { return isRaw() ? QString() : passphrase_; }
    /// The bytes of a raw key; empty for a passphrase.
    QByteArray rawBytes() const {
        return isRaw() ? QByteArray::fromHex(passphrase_.mid(rawMark().size()).toLatin1()) : QByteArray();
    }

  private:
    static QString rawMark() { return QStringLiteral("raw:"); }
    bool isRaw() const { return passphrase_.startsWith(rawMark()); }
    QString passphrase_;
};

}  // namespace store
