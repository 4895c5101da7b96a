// Registers every transformer under its class name, so that bindings can look it up. A transformer with a reference
// gets an empty one: 0, no number, no string, an empty collection.
#pragma once

namespace quillow {

class BookmarkStore;
class Clock;
class ImageCodec;
class TextUnarchiver;
class ValueTransformerRegistry;

/// The ports must outlive the registry.
void registerStandardTransformers(ValueTransformerRegistry& registry, BookmarkStore& bookmarkStore, const Clock& clock,
                                  const ImageCodec& imageCodec, const TextUnarchiver& textUnarchiver); // selector: none

} // namespace quillow
