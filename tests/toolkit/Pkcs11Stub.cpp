/* As much of a PKCS#11 module as loading one looks for. */

extern "C" __attribute__((visibility("default"))) unsigned long C_GetFunctionList(void** list)
{
    constexpr unsigned long functionFailed = 6;
    *list = nullptr;
    return functionFailed;
}
