# SPDX-License-Identifier: MIT
# A machine to build and test on:
#   docker build -t stockbook . && docker run --rm -it stockbook make test
#   docker run --rm -it stockbook make run     (a picture and the first lines of a journal, as there is no display)
FROM debian:12

RUN apt-get update \
 && apt-get install -y --no-install-recommends ca-certificates git make sudo \
 && rm -rf /var/lib/apt/lists/*
# The servers of the tests refuse to be run by root, and tools/install-packages calls sudo.
RUN useradd --create-home --shell /bin/bash developer \
 && echo 'developer ALL=(ALL) NOPASSWD: ALL' >/etc/sudoers.d/developer
USER developer
WORKDIR /home/developer/stockbook
ENV LANG=C.UTF-8

# Installed before the sources come, so that a change of a source installs nothing anew.
COPY --chown=developer tools/install-packages tools/
RUN tools/install-packages && sudo rm -rf /var/lib/apt/lists/*
COPY --chown=developer . .
CMD ["make", "test"]
