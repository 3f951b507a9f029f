#include "pocketjson/Store.h"

namespace {

// Made when the library is loaded, and so the last to go: after all that holds values.
const struct LastToGo {
    ~LastToGo() { pocketjson::Store::freeSpares(); }
} lastToGo;

}  // namespace
