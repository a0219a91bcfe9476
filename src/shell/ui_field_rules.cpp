#include "shell/ui_field_rules.h"

#include "shell/field_rules.h"
#include "shell/ui_box.h"
#include "store/error.h"

namespace shell {
namespace {

std::optional<QString> faultOrError(const QString& text, qint32 maxBytes, bool emptyAllowed,
                                    const QString& label) {
    try {
        return fieldFault(text, maxBytes, emptyAllowed, label);
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

}  // namespace shell
