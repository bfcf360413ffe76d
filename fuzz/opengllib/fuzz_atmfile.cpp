// The text of an atmosphere file.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "atmfile.h"
#include "silenterrors.h"

using namespace sorvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    AtmFile atm;
    if (!atm.parse(text)) {
        if (atm.solarZenith() != 0.0F || atm.signatureBearing() != 0.0F)
            std::abort(); // a failure leaves the values alone
        return 0;
    }
    if (atm.SolarDirWorld().ElementAt(3) > 0.0F)
        std::abort();
    return 0;
}
