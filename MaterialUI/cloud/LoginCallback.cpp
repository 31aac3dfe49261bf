#include "LoginCallback.h"

LoginCallback::LoginCallback() = default;
LoginCallback::LoginCallback(const LoginCallback& other) = default;
LoginCallback& LoginCallback::operator=(const LoginCallback&) = default;
LoginCallback::~LoginCallback() = default;
