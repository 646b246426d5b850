// The module object: stateless; the reflected types register themselves from the generated code
// when the library is loaded.
#include "Modules/ModuleManager.h"

IMPLEMENT_MODULE(FDefaultModuleImpl, ZnUtilsTools)
