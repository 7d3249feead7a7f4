/* The least of a toolkit: it can be opened, and one operation does nothing. */

#define EXPORT __attribute__((visibility("default")))

EXPORT int ZRTK_API_Init(void** context, const char* directory);
EXPORT int ZRTK_CERT_Unload(void* context);

int ZRTK_API_Init(void** context, const char* directory)
{
    static char nothing;
    (void)directory;
    *context = &nothing;
    return 0;
}

int ZRTK_CERT_Unload(void* context)
{
    (void)context;
    return 0;
}
