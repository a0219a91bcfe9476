#include "widgets/platform_messages.h"

#include <QString>
#include <QtGlobal>

namespace widgets {
namespace {

QtMessageHandler previous = nullptr;

void passOn(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (message != QLatin1String("This plugin does not support propagateSizeHints()"))
        previous(type, context, message);
}

}  // namespace

void dropSizeHintMessage() {
    if (const QtMessageHandler before = qInstallMessageHandler(passOn); before != passOn) previous = before;
}

}  // namespace widgets
