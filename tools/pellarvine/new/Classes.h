#pragma once

#include <QtCore/qglobal.h>

// Makes the classes known that interface files and the storyboard name. The program calls this, and
// so does "pellarvine check", which finds it by this name.
extern "C" Q_DECL_EXPORT void pellarvineRegisterClasses();
