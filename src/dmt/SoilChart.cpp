#include "dmt/cls_DmtTEST.h"
