// Checks for mistakes in the program itself.
#include "support/Check.h"

#include "platform/System.h"

#include <string>

void Check(bool holds, const char* what) {
    if (!holds)
        platform::EndForMistake(std::string("Nullwright has found a mistake in itself and ends, so "
                                            "that no harm is done.\r\nPlease report it: ") +
                                what + ".");
}
