// The exports of companions/error_interno.h.
#include "companions/error_interno.hpp"

void error_interno_establece_receptor(ErrorInternoReceptor receive, void* context) {
    interno::i_establece_receptor(receive, context);
}
