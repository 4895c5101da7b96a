// Puts every transformer into the registry under its class name, so that bindings can look each of them up. One with a reference
// has there what it has without any: 0, no number, no string, an empty collection.
#pragma once

namespace quillow {

class BookmarkStore;
class Clock;
class ImageCodec;
class TextUnarchiver;
class ValueTransformerRegistry;

/// The ports outlive the registry.
void registerStandardTransformers(ValueTransformerRegistry& registry, BookmarkStore& bookmarkStore, const Clock& clock,
                                  const ImageCodec& imageCodec, const TextUnarchiver& textUnarchiver); // selector: none

} // namespace quillow
