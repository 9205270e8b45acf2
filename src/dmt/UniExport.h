#pragma once
// The DMTUNI92 exchange file of an evaluated DMT test: plain text, CR LF, strings in double
// quotes, numbers with a point, the fields of a row separated by commas.
//
//   DMTUNI92
//   "DBSM"
//   "<name of the .dat file>"
//   Zi,Zf,Zw,Zabs
//   "firm" / "customer" / "job" / "site" / "remark" / "date" / "test name"   (one a line)
//   N
//   Z,Po,P1,gamma,sigma'v,Uo,Id,|Kd|,Ed,Ko,OCR,M,Cu,soil code                 (N lines)
//
// Each row value is rounded (halves to even) to its own number of decimals: Z 2, Po 0, P1 0,
// gamma 1, sigma'v 0, Uo 0, Id 2, Kd 2, Ed 1, Ko 2, OCR 2, M 1, Cu 0, soil code 0. Readers of the
// format take Kd as a magnitude, so it is written without its sign.

#include <string>

#include "dmt/cls_DmtTEST.h"

namespace koru {

// The bytes of the file, as cls_DmtTEST::generateUNI writes them. Result vectors shorter than
// the rows (a test not evaluated since its last edit) give 0 for the missing values.
std::string uniFileText(const cls_DmtTEST& test);

}  // namespace koru
