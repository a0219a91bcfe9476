#pragma once
#include <QByteArray>
#include <QString>
#include <optional>

struct UConverter;

/// Windows-31J, the code page of lengths and of files that other programs write.
namespace domain {

/// The shared converter; what it cannot convert becomes its replacement. Throws Error(Engine) when the
/// library lacks the table.
UConverter* windows31J();

/// A text file as other office programs write it: UTF-8 with or without its mark, or Windows-31J. Nothing
/// when it is neither.
std::optional<QString> decodeText(const QByteArray& bytes);

}  // namespace domain
