// Reads the encryption dictionary of a document (ISO 32000-2, 7.6.2).
#pragma once

#include "engines/pdf/crypt/Decryption.h"
#include "engines/pdf/syntax/StreamDecoder.h"

namespace quillow::pdf {

/// The values as the file has them, or the defaults of the standard. They are views of the objects.
[[nodiscard]] EncryptionValues encryptionValuesOf(const Dictionary& encryption, const Dictionary& trailer,
                                                  References& references);

} // namespace quillow::pdf
