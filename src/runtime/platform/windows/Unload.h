// For DllMain.
#pragma once

namespace torvo::platform {

/// Calls what was registered by `atUnload`, once.
void runAtUnload() noexcept;

}  // namespace torvo::platform
