#pragma once
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
    /// As the engine takes it, and as the link table stores it.
    const QString& passphrase() const { return passphrase_; }

  private:
    QString passphrase_;
};

}  // namespace store
