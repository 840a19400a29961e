#include "numbers/LimbPool.h"

#include <new>
#include <stdexcept>
#include <string>

namespace huge {

constinit Limb* LimbPool::s_heads[LimbPool::limit] = {};
constinit size_t LimbPool::s_freeBytes = 0;

Limb* LimbPool::resize(Limb* block, size_t limbCount, bool keep)
{
    if (block != nullptr && count(block) == limbCount)
        return block;
    Limb* fresh = allocate(limbCount);
    if (keep) {
        const size_t old = block == nullptr ? 0 : count(block);
        limbsCopyExtend(fresh, block, limbCount, old < limbCount ? old : limbCount);
    }
    release(block);
    return fresh;
}

void LimbPool::failLimit()
{
    throw std::runtime_error("Number size must less than " + std::to_string(limit));
}

Limb* LimbPool::allocateFromHeap(size_t limbCount)
{
    // A block of 0 limbs takes the room of one: its handle stays an address inside its own memory.
    Limb* memory = static_cast<Limb*>(::operator new(bytesOf(limbCount == 0 ? 1 : limbCount)));
    memory[0] = limbCount;
    return memory + 1;
}

void LimbPool::giveBack(Limb* block) noexcept
{
    ::operator delete(block - 1);
}

void LimbPool::shrink() noexcept
{
    // Down to half of the bound, so that the walk is rare. Long blocks go first: they are the ones
    // whose exact size is seldom asked for again.
    for (size_t n = limit; n-- > 0 && s_freeBytes > maxFreeBytes / 2;) {
        while (s_heads[n] != nullptr && s_freeBytes > maxFreeBytes / 2) {
            Limb* block = s_heads[n];
            s_heads[n] = reinterpret_cast<Limb*>(block[-1]);
            s_freeBytes -= bytesOf(n);
            giveBack(block);
        }
    }
}

LimbScratch::LimbScratch(size_t limbCount) : m_pooled(limbCount < LimbPool::limit)
{
    m_limbs = m_pooled ? LimbPool::allocate(limbCount)
                       : static_cast<Limb*>(::operator new(sizeof(Limb) * limbCount));
}

LimbScratch::~LimbScratch()
{
    if (m_pooled)
        LimbPool::release(m_limbs);
    else
        ::operator delete(m_limbs);
}

} // namespace huge
