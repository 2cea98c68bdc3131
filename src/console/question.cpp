#include "console/question.h"

#include "console/line_reader.h"
#include "console/output.h"

namespace console {

std::string ask(const char* question) {
    consolePrint("%s", question);
    return readReply(question);
}

}  // namespace console
