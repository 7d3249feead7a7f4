#pragma once

#include <gtest/gtest.h>

#include "RecordingToolkit.h"
#include "quillgate/records.h"
#include "quillgate/toolkit.h"

/** A toolkit context for the length of a test. */
class Context
{
public:
    Context(RecordingToolkit::Side side, char* directory, char* fileName)
    {
        m_result = ZR_Initalize(&m_context, side == RecordingToolkit::ZRTK ? TOOLKIT_ZRTK : TOOLKIT_GPKI,
                                directory, fileName);
    }
    /** A context over a stand-in, which then forgets the calls of the initialisation. */
    explicit Context(RecordingToolkit& toolkit)
        : Context(toolkit.side(), toolkit.directory(), toolkit.fileName())
    {
        toolkit.forget();
    }
    ~Context() { ZR_Finish(m_context); }
    Context(const Context&) = delete;
    Context& operator=(const Context&) = delete;

    operator void*() const { return m_context; }
    /** What the initialisation answered. */
    int result() const { return m_result; }

private:
    void* m_context = nullptr;
    int m_result;
};

/** Arguments that are in order, where it does not matter what they hold. */
inline unsigned char derBytes[] = {0x30, 0x00};
inline BINSTR filledString = {derBytes, 2};
inline char anyText[] = "text";

/** Tests of the ZR side over a stand-in. */
class OnZrSide : public testing::Test
{
protected:
    RecordingToolkit toolkit{RecordingToolkit::ZRTK};
    Context context{toolkit};
};

/** Tests of the GPKI side over a stand-in. */
class OnGpkiSide : public testing::Test
{
protected:
    RecordingToolkit toolkit{RecordingToolkit::GPKI};
    Context context{toolkit};
};
