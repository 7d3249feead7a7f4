// The cost of one flat call, when the toolkit behind it does nothing.

#include <benchmark/benchmark.h>
#include <dlfcn.h>
#include <quillgate/toolkit.h>
#include <string>

namespace {

constexpr char library[] = "libZRToolkitV30-v3.4.2.20.so";

/** What any access by name must pay: one look-up and one call through the pointer. */
void FloorCall(benchmark::State& state)
{
    void* handle = dlopen((std::string(EMPTY_TOOLKIT_DIR "/") + library).c_str(), RTLD_LAZY);
    for (auto _ : state) {
        auto* operation = reinterpret_cast<int (*)(void*)>(dlsym(handle, "ZRTK_CERT_Unload"));
        benchmark::DoNotOptimize(operation(handle));
    }
    dlclose(handle);
}

void FlatCall(benchmark::State& state)
{
    void* context = nullptr;
    char directory[] = EMPTY_TOOLKIT_DIR;
    std::string name = library;
    if (ZR_Initalize(&context, 0, directory, name.data()) != 0)
        state.SkipWithError("the empty toolkit does not load");
    for (auto _ : state)
        benchmark::DoNotOptimize(CertUnLoad(context));
    ZR_Finish(context);
}

BENCHMARK(FloorCall);
BENCHMARK(FlatCall);

} // namespace
