#pragma once

namespace widgets {

/// Drops one message of the toolkit, which it writes at every window of a machine without a display and which
/// reads like a fault: "This plugin does not support propagateSizeHints()". Every other message goes its way.
/// Called once, first in main.
void dropSizeHintMessage();

}  // namespace widgets
