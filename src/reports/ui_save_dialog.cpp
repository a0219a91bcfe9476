#include "reports/ui_save_dialog.h"

#include <QDir>
#include <QFileDialog>

#include "reports/workbook.h"

namespace reports {
namespace {

/// The title as a file may bear it.
QString fileNameOf(QString title) {
    static const QString kForbidden = QStringLiteral("\\/:*?\"<>|");
    for (QChar& c : title)
        if (kForbidden.contains(c) || c.category() == QChar::Other_Control) c = u'_';
    return title.trimmed().isEmpty() ? QStringLiteral("印刷") : title.trimmed();
}

}  // namespace

QString askWhereToSave(QWidget* parent, const FileKind& kind, const QString& title) {
    // Where the sheets go, too. Without the folder the dialog would fall back to the company's own.
    const QDir documents(SheetFolder::defaultFolder());
    documents.mkpath(QStringLiteral("."));
    const QString proposal = documents.filePath(QStringLiteral("%1.%2").arg(fileNameOf(title), kind.suffix));
    QFileDialog dialog(parent, kind.caption, proposal, kind.filter);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(kind.suffix);
    if (dialog.exec() != QDialog::Accepted) return {};
    return dialog.selectedFiles().value(0);
}

}  // namespace reports
