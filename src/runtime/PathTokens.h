// Special tokens at the start of a path, so that a page can name files without knowing the machine's directories.
#pragma once

#include <string_view>

#include "runtime/Path.h"

namespace fs {

/// The path with a leading token (":temporary/package.dfw") replaced by its directory; any other path as it is. A token
/// whose directory cannot be had gives an empty path. The tokens of the host's own directories (":registry", ":html",
/// ":exports") need libPlugin and answer "FunctionNotFoundError" without it.
Path resolve(std::string_view text);

}  // namespace fs
