#pragma once
#include <QString>

namespace reports {

/// Opens a written file with the desktop's own application for it. False where there is no desktop, or none
/// for the file; the calling screen shows the path in either case.
bool openDocument(const QString& path);

}  // namespace reports
