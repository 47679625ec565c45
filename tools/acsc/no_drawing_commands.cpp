#include "tools/acsc/commands.h"

#include <cstdio>

namespace voxtrel::acsc {

namespace {

int CannotDraw(const char* command)
{
    std::fprintf(stderr, "acsc: this build cannot draw, so there is no '%s'\n", command);
    return 2;
}

} // namespace

int CompileCommand(const Arguments&) { return CannotDraw("compile"); }

int BuildCommand(const Arguments&) { return CannotDraw("build"); }

int ExtractCommand(const Arguments&) { return CannotDraw("extract"); }

int SheetCommand(const Arguments&) { return CannotDraw("sheet"); }

} // namespace voxtrel::acsc
