#include "dmt/UniExport.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <vector>

#include "frame/Files.h"
#include "frame/Numbers.h"
#include "frame/TextCodec.h"

namespace koru {

namespace {

// The plain conversion of a value rounded to `decimals`.
std::string rounded(double value, int decimals) { return formatNumber(roundTo(value, decimals), ""); }
std::string rounded(float value, int decimals) { return formatNumber(roundTo(value, decimals), ""); }

template <typename T>
T at(const std::vector<T>& v, size_t row) {
  return row < v.size() ? v[row] : T{};
}

// A string field: a double quote can't stand inside one, so it becomes a single quote.
std::string quotedField(std::string_view text) {
  std::string clean(text);
  std::replace(clean.begin(), clean.end(), '"', '\'');
  std::replace(clean.begin(), clean.end(), '\r', ' ');
  std::replace(clean.begin(), clean.end(), '\n', ' ');
  return "\"" + utf8ToCp1252(clean) + "\"";
}

// The part of the path after its last separator, as UTF-8.
std::string datFileName(const std::filesystem::path& path) {
  const std::u8string u8 = path.u8string();
  const std::string text(u8.begin(), u8.end());
  const size_t slash = text.find_last_of("\\/");
  return slash == std::string::npos ? text : text.substr(slash + 1);
}

}  // namespace

std::string uniFileText(const cls_DmtTEST& t) {
  const std::string crlf = "\r\n";
  std::string out = "DMTUNI92" + crlf;
  out += quotedField("DBSM") + crlf;
  out += quotedField(datFileName(t.getDatPath())) + crlf;
  out += formatNumber(t.Zi(), "") + "," + formatNumber(t.Zf(), "") + "," + formatNumber(t.sngZw, "") + "," +
         formatNumber(t.sngZabs, "") + crlf;
  for (const std::string* text : {&t.strFirm, &t.strCustomer, &t.strJob, &t.strSite, &t.strRemark, &t.strDate,
                                  &t.strTstname})
    out += quotedField(*text) + crlf;
  const int n = t.N();
  out += std::to_string(n) + crlf;
  for (size_t i = 0; i < static_cast<size_t>(n); ++i) {
    const std::string fields[] = {
        rounded(at(t.vZ, i), 2),
        rounded(at(t.vecPo, i), 0),
        rounded(at(t.vecP1, i), 0),
        rounded(at(t.vecGamma, i), 1),
        rounded(at(t.vecSigmaEff, i), 0),
        rounded(at(t.vecUo, i), 0),
        rounded(at(t.vecId, i), 2),
        rounded(std::fabs(at(t.vecKd, i)), 2),
        rounded(at(t.vecEd, i), 1),
        rounded(at(t.vecKo, i), 2),
        rounded(at(t.vecOCR, i), 2),
        rounded(at(t.vecM, i), 1),
        rounded(at(t.vecCu, i), 0),
        rounded(static_cast<double>(at(t.vecSoilType, i)), 0),
    };
    std::string line;
    for (const std::string& field : fields) {
      if (!line.empty()) line += ",";
      line += field;
    }
    out += line + crlf;
  }
  return out;
}

bool cls_DmtTEST::generateUNI(const std::filesystem::path& file, Diagnostic* why) const {
  return writeFileAtomically(file, uniFileText(*this), why);
}

}  // namespace koru
