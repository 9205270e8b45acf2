#include "probe/cls_Calibration.h"
