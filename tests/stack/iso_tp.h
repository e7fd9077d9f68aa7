/* Stand-in for the transport protocol under the name that the older stack has for it. */
#include <core_isotp.h>
