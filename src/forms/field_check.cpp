#include "forms/field_check.h"

#include "domain/field_rules.h"
#include "forms/box.h"
#include "store/error.h"

namespace forms {
namespace {

std::optional<QString> faultOrError(const QString& text, qint32 maxBytes, bool emptyAllowed,
                                    const QString& label) {
    try {
        return domain::fieldFault(text, maxBytes, emptyAllowed, label);
    } catch (const store::Error& error) {
        return error.text() + u' ' + label;
    }
}

}  // namespace

bool check_field(QWidget* parent, const QString& text, qint32 maxBytes, bool emptyAllowed,
                 const QString& label) {
    const auto fault = faultOrError(text, maxBytes, emptyAllowed, label);
    if (fault) tell(parent, *fault, QStringLiteral("入力のエラー"), BoxIcon::Critical);
    return !fault;
}

}  // namespace forms
