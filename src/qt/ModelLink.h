// A view's hold on its model. Either may end first: the view then has no model, or the model one listener less.
#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "ui/Signal.h"

namespace vantrelix::qt {

template <class Model>
class ModelLink {
 public:
  // `changed` is called behind each change of the model's state, `gone` when the model has been destroyed.
  ModelLink(Model& model, std::function<void()> changed, std::function<void()> gone) : model_(&model) {
    // The token lives in the model's own list of listeners, and so exactly as long as the model does.
    auto token = std::make_shared<Token>(std::move(gone));
    token_ = token;
    connection_ = model.changed.connect([token = std::move(token), changed = std::move(changed)] { changed(); });
  }
  ~ModelLink() {
    if (auto token = token_.lock()) token->gone = nullptr;
  }
  ModelLink(const ModelLink&) = delete;
  ModelLink& operator=(const ModelLink&) = delete;

  // Null once the model has been destroyed.
  Model* get() const { return token_.expired() ? nullptr : model_; }

 private:
  struct Token {
    explicit Token(std::function<void()> onGone) : gone(std::move(onGone)) {}
    ~Token() {
      if (gone) gone();
    }
    Token(const Token&) = delete;
    Token& operator=(const Token&) = delete;
    std::function<void()> gone;
  };

  Model* model_;
  std::weak_ptr<Token> token_;
  Connection connection_;
};

}  // namespace vantrelix::qt
