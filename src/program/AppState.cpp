#include "program/AppState.h"
