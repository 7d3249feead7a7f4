#pragma once

#include "quillgate/certlist.h"

/** A buffer of the list service, given back when the scope ends. */
class ServiceBuffer
{
public:
    explicit ServiceBuffer(void* context) : m_context(context) {}
    ~ServiceBuffer()
    {
        void* buffer = data;
        if (buffer)
            CLP_MemFree(m_context, &buffer);
    }
    ServiceBuffer(const ServiceBuffer&) = delete;
    ServiceBuffer& operator=(const ServiceBuffer&) = delete;

    bool holds() const { return data && length > 0; }

    char* data = nullptr;
    int length = 0;

private:
    void* m_context;
};

/** What the list service hands out for one acceptance; given back signing key first, key random last. */
struct KeyBuffers
{
    explicit KeyBuffers(void* context) : random(context), kmKey(context), signKey(context) {}

    ServiceBuffer random;
    ServiceBuffer kmKey;
    ServiceBuffer signKey;
};

/** Certificates and keys of an imported file; given back in the order certificate, key, km pair. */
struct PairBuffers
{
    explicit PairBuffers(void* context) : kmKey(context), kmCert(context), signKey(context), signCert(context)
    {}

    ServiceBuffer kmKey;
    ServiceBuffer kmCert;
    ServiceBuffer signKey;
    ServiceBuffer signCert;
};
