#ifndef QUILLGATE_TEST_FAULT_SHIM_H
#define QUILLGATE_TEST_FAULT_SHIM_H

/*
 * Preloaded: counts the calls that touch files below a directory, and lets one of them go wrong. What counts
 * are the C library's functions by which this project's code reaches a file; a descriptor counts when it was
 * opened below the directory. Nothing is really flushed to the disk. One thread.
 */

#ifdef __cplusplus
extern "C" {
#endif

enum FaultKind
{
    FAULT_NONE,  /* counts alone */
    FAULT_KILL,  /* the process is killed just before the call; a write has then written half */
    FAULT_ERROR, /* the call alone answers with the error */
    FAULT_FULL,  /* from the call on, nothing that needs room succeeds; a write first writes half */
    FAULT_VANISH /* just before the call the directory `victim` gets another name */
};

struct FaultPlan
{
    enum FaultKind kind;
    long at;            /* number of the call, from 1 */
    int error;          /* errno of FAULT_ERROR and FAULT_FULL */
    const char* root;   /* directory, without a slash at its end */
    const char* victim; /* FAULT_VANISH */
    const char* away;   /* its new name */
};

/* Begins to count. The plan must live until the end. */
void fault_begin(const struct FaultPlan* plan);

/* Ends counting; the number of calls. */
long fault_end(void);

/* Name of the call that went wrong; empty when none did. */
const char* fault_name(void);

#ifdef __cplusplus
}
#endif

#endif
