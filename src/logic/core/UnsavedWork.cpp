#include "core/UnsavedWork.h"

#include <exception>
#include <iterator>
#include <utility>

namespace kelvo {

UnsavedWork::Registration& UnsavedWork::Registration::operator=(Registration&& other) noexcept {
    if (this == &other) return *this;
    Release();
    list_ = std::exchange(other.list_, nullptr);
    at_ = other.at_;
    return *this;
}

void UnsavedWork::Registration::Release() {
    if (list_ != nullptr) list_->sources_.erase(at_);
    list_ = nullptr;
}

UnsavedWork::Registration UnsavedWork::Add(Source source) {
    Registration registration;
    registration.list_ = this;
    registration.at_ = sources_.insert(sources_.end(), std::move(source));
    return registration;
}

std::vector<UnsavedPiece> UnsavedWork::Collect() const {
    std::vector<UnsavedPiece> pieces;
    for (const Source& source : sources_) {
        try {
            std::vector<UnsavedPiece> held = source();
            std::move(held.begin(), held.end(), std::back_inserter(pieces));
        } catch (const std::exception&) {
            // Its state can no longer be trusted; the others are still worth keeping.
        }
    }
    return pieces;
}

}  // namespace kelvo
