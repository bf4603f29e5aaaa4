// Stand-in until the fake platform is written.
#include "platform/System.h"
