#pragma once

#include <ctime>
#include <optional>

#include "samplepki/Authority.h"

/** What an answer of a status responder is to say. */
struct StatusAnswer
{
    samplepki::Bytes signer; /**< certificate of who signs */
    samplepki::KeyPair key;  /**< and its key */
    std::time_t from = std::time(nullptr);
    std::optional<std::time_t> until = {}; /**< none: the answer does not say how long it holds */
    bool repeatsNonce = true;
    bool hasOwnNonce = false;  /**< one that the request does not have */
    bool aboutAnother = false; /**< about another certificate than it was asked */
};

/** Answers a request with "good". openssl's own responder gives current answers alone. */
samplepki::Bytes answerGood(const samplepki::Bytes& request, const StatusAnswer& answer);

/** Whether a request is signed, by who holds a certificate. */
bool isSignedBy(const samplepki::Bytes& request, const samplepki::Bytes& certificate);
