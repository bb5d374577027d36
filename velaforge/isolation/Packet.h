// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/isolation/Export.h>

#include <cstddef>
#include <vector>

namespace vfIsolation {

/// Sends a packet through a SOCK_SEQPACKET socket, without waiting.
/// @param socket  open
/// @param data    the bytes of the packet
/// @param size    their number
/// @param files  at most 8 descriptors that go with it; they stay the caller's
/// @return false, with errno set, when it was not sent: EAGAIN when the socket is full
VFISOLATION_EXPORT bool sendPacket(int socket, const void* data, std::size_t size,
                                   const std::vector<int>& files = {});

/// Receives a packet, waiting for it.
/// @param socket  open
/// @param data    where the bytes of the packet are put
/// @param size    their number, which is that of the packet
/// @param files  set to the descriptors that came with it, which the caller closes
/// @return false when the other side has closed the socket, or sent a packet of another size; all descriptors are closed then
VFISOLATION_EXPORT bool receivePacket(int socket, void* data, std::size_t size, std::vector<int>& files);

/// Receives a packet and closes the descriptors that came with it.
VFISOLATION_EXPORT bool receivePacket(int socket, void* data, std::size_t size);

} // namespace vfIsolation
