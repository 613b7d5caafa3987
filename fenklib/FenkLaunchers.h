#pragma once
// The launchers libfenk exports, as a host that links the library declares them: one declaration
// per row of FenkLauncherTable.h, with its shape's parameters (FenkLauncherShapes.h). A host that
// loads the library at run time binds the same names with dlsym/QLibrary::resolve, typed with
// decltype of these declarations.
#include "fenklib/FenkLauncherShapes.h"
#include "fenklib/frame/FenkExport.h"

#define FENK_LAUNCHER(name, window, shape, caption) FENK_EXPORT int name FENK_SHAPE_PARAMETERS(FENK_SHAPE_##shape);
extern "C" {
#include "fenklib/FenkLauncherTable.h"
}
#undef FENK_LAUNCHER

// The caption a host shows for the launcher named launcherName, from the library's string table;
// false for a name that is not a launcher.
extern "C" FENK_EXPORT bool FenkLauncherCaption(const char* launcherName, basekit::ustring& caption);
