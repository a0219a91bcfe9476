#pragma once

#include <QString>

namespace forms {
class ScreenRegistry;
}

/// Enters every screen that is built under its name. The only place that knows them all. Spreadsheets go to
/// `sheetFolder`; empty for the user's own documents folder.
void registerScreens(forms::ScreenRegistry& screens, const QString& sheetFolder = {});
