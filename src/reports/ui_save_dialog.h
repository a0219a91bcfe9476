#pragma once
#include <QString>

class QWidget;

namespace reports {

/// A file that the user wants written.
struct FileKind {
    QString caption;  ///< of the dialog
    QString filter;   ///< "PDF ファイル (*.pdf)"
    QString suffix;   ///< "pdf"
};
/// Asks where to save; the proposal is `title` in the documents folder, without what a file may not bear.
/// Empty when the user thought better of it.
QString askWhereToSave(QWidget* parent, const FileKind& kind, const QString& title);

}  // namespace reports
