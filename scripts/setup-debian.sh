#!/usr/bin/env bash
# Installs every Debian 12 package needed to build, test and run the demo.
# Must run as root (or through sudo) on a fresh machine.
set -euo pipefail
SUDO=""
if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update
$SUDO apt-get install -y --no-install-recommends \
  build-essential cmake pkg-config ninja-build \
  clang lld libclang-rt-14-dev clang-format \
  qtbase5-dev qtbase5-dev-tools libqt5svg5-dev \
  libopenscenegraph-dev openscenegraph \
  libopencv-core-dev libopencv-imgcodecs-dev \
  libx11-dev libx11-xcb-dev libxcb1-dev \
  libgl1-mesa-dev libgl1-mesa-dri libglu1-mesa-dev \
  googletest libgtest-dev \
  xvfb xauth fonts-arphic-ukai fonts-dejavu-core \
  valgrind
