// Memory for the texts and bytes of one row: addresses stay valid until reset(), and the blocks are
// kept, so that a scan allocates nothing once it is under way.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

namespace stelvan::jet {

class Arena {
public:
    /// Room for `size` bytes; what is not used of it can be given back with shrink().
    char* take(std::size_t size) {
        while (current_ < blocks_.size()) {
            Block& block = blocks_[current_];
            if (size <= block.size - used_) {
                last_ = used_;
                used_ += size;
                return block.bytes.get() + last_;
            }
            ++current_;
            used_ = 0;
        }
        return grow(size);
    }

    /// Keeps only the first `size` bytes of what was taken last.
    void shrink(std::size_t size) { used_ = last_ + size; }

    /// Everything taken becomes invalid. Blocks for huge values go back to the system.
    void reset() {
        if (current_ > 0 || (!blocks_.empty() && blocks_[0].size > kKept)) drop();
        current_ = 0;
        used_ = 0;
    }

private:
    static constexpr std::size_t kBlock = 16 * 1024;
    static constexpr std::size_t kKept = 1024 * 1024;
    struct Block {
        std::unique_ptr<char[]> bytes;
        std::size_t size = 0;
    };

    char* grow(std::size_t size) {
        const std::size_t room = size > kBlock ? size : kBlock;
        blocks_.push_back({std::make_unique_for_overwrite<char[]>(room), room});
        current_ = blocks_.size() - 1;
        last_ = 0;
        used_ = size;
        return blocks_.back().bytes.get();
    }

    void drop() {
        std::erase_if(blocks_, [](const Block& block) { return block.size > kKept; });
    }

    std::vector<Block> blocks_;
    std::size_t current_ = 0;
    std::size_t used_ = 0;
    std::size_t last_ = 0;
};

}  // namespace stelvan::jet
