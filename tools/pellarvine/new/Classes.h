#pragma once

#include <QtCore/qglobal.h>

// Registers the classes that interface files and the storyboard name. The program calls it, and so
// does "pellarvine check", which looks for this name.
extern "C" Q_DECL_EXPORT void pellarvineRegisterClasses();
