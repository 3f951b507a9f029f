// A host that ends its process without unloading the plug-in, two packages being open: exit_host FILE
#include <cstdlib>

#include "host/Session.h"

int main(int argc, char** argv) {
    static const host::Session& session = *new host::Session();
    const std::string body = host::Json{{"path", argc > 1 ? argv[1] : ""}}.dump();
    bool opened = true;
    for (int i = 0; i < 2; ++i) {
        const host::Json exchange = session.call("FileSystemDfwFile", {R"({"method":"POST"})", "", "", body});
        opened = exchange.at("responses").at(0).at("status") == 200 && opened;
    }
    std::exit(opened ? 0 : 1);
}
