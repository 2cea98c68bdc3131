#include "link/report.h"

#include <algorithm>

namespace scannerlink {

std::string reportText(const Report& report, size_t offset, size_t size) {
    const char* begin = reinterpret_cast<const char*>(&report) + std::min(offset, kReportSize);
    const char* end = begin + std::min(size, kReportSize - std::min(offset, kReportSize));
    return {begin, std::find(begin, end, '\0')};
}

}  // namespace scannerlink
