#pragma once

#include <QString>

namespace shell {
class ScreenRegistry;
}

/// Enters every screen that is built under its name. The only place that knows them all. Spreadsheets go to
/// `sheetFolder`; empty for the user's own documents folder.
void registerScreens(shell::ScreenRegistry& screens, const QString& sheetFolder = {});
