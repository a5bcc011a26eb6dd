#include "text/ProgramLocale.h"

#include <clocale>
#include <locale>

namespace kelvo {

void SetProgramLocale() {
    std::locale::global(std::locale::classic());
    // The letters of the desktop stay, for names of files; its numbers do not.
    std::setlocale(LC_CTYPE, "");
    std::setlocale(LC_NUMERIC, "C");
}

}  // namespace kelvo
