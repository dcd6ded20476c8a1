#include "tessaro/mapping/MapScheme.h"

OrderedTextMap<MapScheme*> schemes;
