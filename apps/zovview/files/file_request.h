#pragma once

namespace zovview {

/// What a user wants of files of models and pictures.
struct FileRequest {
  enum class Kind : int { OpenModel, SavePicture };
  Kind kind = Kind::OpenModel;
  int enlargement = 1;  ///< Of a picture: so many times the size of the view.
};

}  // namespace zovview
