// The exported entry points: one C function for each RESOURCE of the table.
#include <cstdint>

#include "bridge/Entry.h"

#define ALIAS(...)

#define RESOURCE(ordinal, name, path, methods) \
    namespace torvo::bridge {                  \
    class name;                                \
    extern template struct Entry<name>;        \
    }
#include "exports/ResourceTable.inc"
#undef RESOURCE

extern "C" {

#define RESOURCE(ordinal, name, path, methods)                                                                  \
    std::uint32_t name(const char* options, const char* params, const char* query, const char* body) noexcept { \
        return torvo::bridge::Entry<torvo::bridge::name>::serve(path, {options, params, query, body});          \
    }
#include "exports/ResourceTable.inc"
#undef RESOURCE

/// The host may call this after loading the plug-in. Everything is made when it is first needed, so nothing happens.
std::uint32_t Setup(const char*, const char*, const char*, const char*) noexcept {
    return 0;
}

// TearDown has no code here: it is libdmc's DmCtrlRelease under another name.
}
