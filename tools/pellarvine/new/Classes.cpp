#include "Classes.h"

#include "GreetingController.h"

#include <pellarvine/Platform/ClassRegistry.h>

void pellarvineRegisterClasses()
{
    NS::registerClass<GreetingController>();
}
