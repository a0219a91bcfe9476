#pragma once

namespace shell {
class ScreenRegistry;
}

/// Enters every screen that is built under its name. The only place that knows them all.
void registerScreens(shell::ScreenRegistry& screens);
