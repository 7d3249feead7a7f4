/* The main toolkit's interface: PFX files and the lists of objects that they are exchanged with. */

#define QGTK_PREFIX ZRTK_

#include "toolkit/core/ObjectList.h"
#include "toolkit/interface/Pkcs12.h"

using namespace qgtk;

namespace {

/** The only mode in which a file without an integrity check is read; callers try it when mode 0 has failed.
 */
constexpr int lenientMode = 16;

PfxIntegrity integrityOfMode(int mode)
{
    require(mode == 0 || mode == lenientMode, Code::NotSupported);
    return mode == 0 ? PfxIntegrity::Required : PfxIntegrity::WhenPresent;
}

/** Objects as a list; empty for none. */
SecretBytes listOf(const std::vector<ByteView>& objects)
{
    SecretBytes list;
    for (const ByteView object : objects)
        list = appendObject(list, object);
    return list;
}

/** Writes a file of pairs in two lists and of issuers' certificates in a third. */
void exportPairs(Context& context, int option, const char* password, const BINSTR* certificates,
                 const BINSTR* keys, const BINSTR* authorities, BINSTR* pfx)
{
    const PfxProfile profile = profileOfOption(option);
    const std::vector<ByteView> issuers =
        authorities ? splitCertificateList(viewOf(authorities)) : std::vector<ByteView>();
    const std::vector<PfxPair> pairs = matchPairs(
        context.crypto(), splitCertificateList(viewOf(certificates)), splitObjectList(viewOf(keys)));
    assign(pfx, writePfx(context, pairs, issuers, password, profile));
}

/** Reads a file into three lists. */
void importPairs(Context& context, PfxIntegrity integrity, const char* password, const BINSTR* pfx,
                 BINSTR* certificates, BINSTR* keys, BINSTR* authorities)
{
    const PfxContents contents = readPfx(context, pfx, password, integrity);
    const PfxLists lists = sortPfx(context.crypto(), contents);
    assignAll({{certificates, listOf(lists.holders)},
               {keys, listOf(lists.keys)},
               {authorities, listOf(lists.authorities)}});
}

/** Whether a list begins with a plain private key. */
bool isListOfKeys(const BINSTR* list)
{
    return isPlainKey(splitObjectList(viewOf(list)).front());
}

/** An option that has been handed over where others hand a pointer: no memory lies so low. */
bool isPointer(const void* argument)
{
    constexpr std::uintptr_t lowestAddress = 65536;
    return reinterpret_cast<std::uintptr_t>(argument) >= lowestAddress;
}

} // namespace

QGTK_OPERATION(PFX_Export)
(void* handle, int option, char* password, BINSTR* certificate, BINSTR* key, BINSTR* pfx)
{
    return callOn(handle, [&](Context& context) {
        const PfxProfile profile = profileOfOption(option);
        const std::vector<PfxPair> pairs = matchPairs(context.crypto(), {viewOf(certificate)}, {viewOf(key)});
        assign(pfx, writePfx(context, pairs, {}, password, profile));
    });
}

QGTK_OPERATION(PFX_Export2)
(void* handle, char* password, BINSTR* certificate, BINSTR* key, BINSTR* authorities, BINSTR* pfx)
{
    return callOn(handle, [&](Context& context) {
        const std::vector<ByteView> issuers = splitCertificateList(viewOf(authorities));
        const std::vector<PfxPair> pairs = matchPairs(context.crypto(), {viewOf(certificate)}, {viewOf(key)});
        assign(pfx, writePfx(context, pairs, issuers, password, PfxProfile::Strong));
    });
}

/*
 * One symbol, two argument lists, and callers use both: (option, password, certificates, keys, file) and
 * (password, certificates, keys, authorities, file). The fourth argument is a list in each, of certificates
 * in the first and of keys in the second; what lies in it tells, so that no argument is taken for what it is
 * not.
 */
QGTK_OPERATION(PFX_ExportMultiPair)
(void* handle, void* second, void* third, BINSTR* fourth, BINSTR* fifth, BINSTR* pfx)
{
    return callOn(handle, [&](Context& context) {
        if (!isListOfKeys(fourth)) {
            const int option = static_cast<int>(reinterpret_cast<std::intptr_t>(second));
            exportPairs(context, option, static_cast<const char*>(third), fourth, fifth, nullptr, pfx);
            return;
        }
        require(isPointer(second) && fifth, Code::BadArgument);
        exportPairs(context, 0, static_cast<const char*>(second), static_cast<const BINSTR*>(third), fourth,
                    fifth, pfx);
    });
}

QGTK_OPERATION(PFX_Import)
(void* handle, char* password, BINSTR* pfx, BINSTR* certificate, BINSTR* key, BINSTR* authorities)
{
    return callOn(handle, [&](Context& context) {
        const PfxContents contents = readPfx(context, pfx, password, PfxIntegrity::WhenPresent);
        const PfxHolder holder = holderOf(context.crypto(), contents, context.charset());
        const PfxPair& pair = holder.signing.key.empty() ? holder.management : holder.signing;
        BINSTR unwanted = {};
        assignAll({{certificate, pair.certificate},
                   {key, pair.key},
                   {authorities ? authorities : &unwanted,
                    listOf(sortPfx(context.crypto(), contents).authorities)}});
        release(&unwanted);
    });
}

QGTK_OPERATION(PFX_ImportMultiPair)
(void* handle, char* password, BINSTR* pfx, BINSTR* certificates, BINSTR* keys, BINSTR* authorities)
{
    return callOn(handle, [&](Context& context) {
        importPairs(context, PfxIntegrity::WhenPresent, password, pfx, certificates, keys, authorities);
    });
}

QGTK_OPERATION(PFX_ImportMultiPair2)
(void* handle, int mode, char* password, BINSTR* pfx, BINSTR* certificates, BINSTR* keys, BINSTR* authorities)
{
    return callOn(handle, [&](Context& context) {
        importPairs(context, integrityOfMode(mode), password, pfx, certificates, keys, authorities);
    });
}

QGTK_OPERATION(UTIL_AddObject)(void* handle, BINSTR* object, BINSTR* objects)
{
    return callOn(handle, [&](Context&) {
        require(objects != nullptr, Code::BadArgument);
        const bool isEmpty = !objects->pData || objects->nLen == 0;
        assign(objects, appendObject(isEmpty ? ByteView() : viewOf(objects), viewOf(object)));
    });
}

QGTK_OPERATION(UTIL_GetObjectCount)(void* handle, BINSTR* objects, int* count)
{
    return callOn(handle,
                  [&](Context&) { store(count, static_cast<int>(splitObjectList(viewOf(objects)).size())); });
}

QGTK_OPERATION(UTIL_GetObject)(void* handle, BINSTR* objects, int index, BINSTR* object)
{
    return callOn(handle, [&](Context&) { assign(object, objectAt(viewOf(objects), index)); });
}
