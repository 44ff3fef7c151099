#include "WindowFixture.h"

// The macro declares a function and therefore needs the global namespace.
void initResources()
{
    Q_INIT_RESOURCE(images);
}
