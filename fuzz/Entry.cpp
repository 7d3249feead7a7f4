// Where libFuzzer enters a target.

#include "Target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz({data, size});
    return 0;
}
