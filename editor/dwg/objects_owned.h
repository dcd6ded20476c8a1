#pragma once

#include "editor/dwg/objects_stream.h"

/// What belongs to a block record, insertion or polyline: up to 2000 a chain of which only the ends are stored, from
/// 2004 on the list itself, its length among the data.
namespace dwg {

template <class Stream> void transferCount(Stream& s, std::size_t& count) {
    if constexpr (Stream::reading) {
        count = s.data.bl();
        if (count > s.handles.remaining() / 8)
            s.handles.fail();
    } else if constexpr (Stream::writing) {
        s.data.bl(static_cast<std::uint32_t>(count));
    }
}

/// Members of a list are no references of the object in memory: visiting passes them by.
template <class Stream> void transferOwned(Stream& s, std::vector<Handle>& members, std::size_t count) {
    if constexpr (Stream::reading) {
        if (!s.failed())
            s.resizeItems(members, count);
        for (Handle& member : members) {
            HandleRef reference;
            s.h(reference);
            member = reference.value;
        }
    } else if constexpr (Stream::writing) {
        for (const Handle member : members)
            s.h({handle_code::hardOwner, member});
    }
}

/// The parts of an entity. Their number stands at the call's place among the data, the references at the end.
template <class Stream> void transferChain(Stream& s, OwnedChain& chain) {
    std::size_t count = chain.parts.size();
    if (s.since(Release::r2004))
        transferCount(s, count);
    if (s.until(Release::r2000)) {
        s.h(chain.first);
        s.h(chain.last);
    }
    if (s.since(Release::r2004))
        transferOwned(s, chain.parts, count);
    s.h(chain.sequenceEnd);
}

} // namespace dwg
