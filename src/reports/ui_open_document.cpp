#include "reports/ui_open_document.h"

#include <QDesktopServices>
#include <QGuiApplication>
#include <QUrl>

namespace reports {

bool openDocument(const QString& path) {
    const QString platform = QGuiApplication::platformName();
    if (platform == u"offscreen" || platform == u"minimal") return false;
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

}  // namespace reports
