#pragma once
// The job a test belongs to, as the DMT file, the vertical's file and the results view each
// carry it: one struct, so that a copy from one to the other is one assignment.

#include <string>

namespace koru {

struct TestHeader {
  std::string strFirm, strCustomer, strSite, strJob, strRemark;
  std::string strDate;  // "d MMM yyyy"
};

}  // namespace koru
