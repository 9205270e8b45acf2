#include "frame/AppState.h"
