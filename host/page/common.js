'use strict';
// What the pages have in common: a time line with lanes, and a long table beside it.
const Page = (() => {
  const byId = (id) => document.getElementById(id);

  const make = (tag, className, text) => {
    const element = document.createElement(tag);
    if (className) element.className = className;
    if (text !== undefined) element.textContent = text;
    return element;
  };

  // Times are local ones, counted as if they were UTC.
  const iso = (ms) => new Date(ms).toISOString();
  const day = (ms) => iso(ms).slice(0, 10);
  const clock = (ms) => iso(ms).slice(11, 19);
  const exact = (ms) => (ms === null ? '' : iso(ms).slice(11, 23).replace('.', ' '));
  const duration = (ms) => {
    if (ms < 0) return '−' + duration(-ms);
    const seconds = Math.floor(ms / 1000);
    if (seconds === 0) return ms + ' ms';
    if (seconds < 60) return (Math.floor(ms / 100) / 10).toFixed(1) + ' s';
    if (seconds < 3600) return Math.floor(seconds / 60) + ' min ' + (seconds % 60) + ' s';
    if (seconds < 86400) return Math.floor(seconds / 3600) + ' h ' + Math.floor(seconds % 3600 / 60) + ' min';
    return Math.floor(seconds / 86400) + ' d ' + Math.floor(seconds % 86400 / 3600) + ' h';
  };
  const counted = (count, word) => count.toLocaleString('en') + ' ' + word + (count === 1 ? '' : 's');

  const lastAtMost = (array, value) => {
    let low = 0;
    let high = array.length;
    while (low < high) {
      const middle = (low + high) >> 1;
      if (array[middle] <= value)
        low = middle + 1;
      else
        high = middle;
    }
    return Math.max(0, low - 1);
  };

  // Where times, which are in order, are drawn: `lengthOf` tells how long a step between two of them becomes. Steps
  // above `longest` milliseconds are marked as pauses.
  const spread = (times, lengthOf, longest) => {
    const places = new Float64Array(times.length);
    const pauses = [];
    for (let i = 1; i < times.length; ++i) {
      const step = times[i] - times[i - 1];
      places[i] = places[i - 1] + lengthOf(step);
      if (step > longest) pauses.push({ place: places[i - 1], end: places[i], length: step });
    }
    const placeOf = (ms) => {
      const i = lastAtMost(times, ms);
      const place = places[i] + (ms > times[i] ? lengthOf(ms - times[i]) : 0);
      return i + 1 < places.length ? Math.min(place, places[i + 1]) : place;
    };
    const timeAt = (place) => {
      const i = lastAtMost(places, place);
      if (i + 1 >= places.length) return times[i] + (place - places[i]);
      const part = (place - places[i]) / (places[i + 1] - places[i]);
      return Math.round((times[i] + part * (times[i + 1] - times[i])) * 1000) / 1000;
    };
    return { places, pauses, placeOf, timeAt, extent: places.length ? places[places.length - 1] : 0 };
  };

  // Draws what is near the window. `whole` is the places' extent, with what it takes behind the last; `drawLanes` is
  // given where to begin and to end; `tickOf` gives the label of a time, and its room in pixels.
  const timeline = ({ line, whole, mostScale, pauseTitle, tickOf, drawLanes, lengthText = duration }) => {
    const scroll = byId('scroll');
    const canvas = byId('canvas');
    const axis = canvas.appendChild(make('div', 'axis'));
    const shade = canvas.appendChild(make('div', 'shade'));
    let scale = 1; // pixels a unit of place
    const fitScale = () => scroll.clientWidth / whole;
    const clampScale = (wanted) =>
      Math.min(Math.max(wanted, fitScale()), Math.max(mostScale, fitScale()), 16e6 / whole);

    const drawAxis = (from, to) => {
      const drawn = [];
      for (const { place, end, length } of line.pauses) {
        if (end < from || place > to) continue;
        const pause = make('div', 'pause');
        pause.style.left = place * scale + 'px';
        pause.style.width = (end - place) * scale + 'px';
        pause.title = lengthText(length) + pauseTitle;
        if ((end - place) * scale > 45) pause.appendChild(make('span', '', lengthText(length)));
        drawn.push(pause);
      }
      // A time at each pause's end, and in what is long without one.
      let free = -Infinity;
      const tick = (place) => {
        if (place < free || place < from || place > Math.min(to, line.extent)) return;
        const { text, width } = tickOf(line.timeAt(place), scale);
        const label = axis.appendChild(make('div', 'tick', text));
        label.style.left = place * scale + 'px';
        free = place + width / scale;
      };
      axis.replaceChildren();
      const step = 130 / scale;
      const starts = [0, ...line.pauses.map(({ end }) => end)];
      starts.forEach((start, i) => {
        const end = i < line.pauses.length ? line.pauses[i].place : whole;
        if (end < from || start > to) return;
        for (let place = start; place === start || place < end - step / 2; place += step) tick(place);
      });
      shade.replaceChildren(...drawn);
    };

    const draw = () => {
      const from = (scroll.scrollLeft - scroll.clientWidth) / scale;
      const to = (scroll.scrollLeft + 2 * scroll.clientWidth) / scale;
      const focused = document.activeElement && document.activeElement.dataset.mark;
      drawLanes(from, to, scale);
      drawAxis(from, to);
      if (focused !== undefined) canvas.querySelector('[data-mark="' + focused + '"]')?.focus({ preventScroll: true });
    };

    const setScale = (wanted, width = scroll.clientWidth) => {
      const middle = (scroll.scrollLeft + scroll.clientWidth / 2) / scale;
      scale = wanted;
      canvas.style.width = Math.max(width, whole * scale) + 'px';
      scroll.scrollLeft = middle * scale - scroll.clientWidth / 2;
      draw();
    };

    const reveal = (place) => {
      const left = place * scale;
      if (left < scroll.scrollLeft || left > scroll.scrollLeft + scroll.clientWidth - 40) {
        scroll.scrollLeft = left - scroll.clientWidth / 3;
      }
    };

    scroll.addEventListener('scroll', () => requestAnimationFrame(draw));
    byId('in').addEventListener('click', () => setScale(clampScale(scale * 2)));
    byId('out').addEventListener('click', () => setScale(clampScale(scale / 2)));
    byId('fit').addEventListener('click', () => setScale(fitScale()));
    window.addEventListener('resize', () => setScale(clampScale(scale)));

    // On paper there is no scrolling.
    const paperWidth = 560; // of A4 and Letter, beside the lanes' names
    let scaleBefore = 1;
    window.addEventListener('beforeprint', () => {
      scaleBefore = scale;
      setScale(paperWidth / whole, paperWidth);
    });
    window.addEventListener('afterprint', () => setScale(scaleBefore));

    return {
      addLane : (className, title) => {
        byId('labels').appendChild(make('div', className, title)).title = title;
        return canvas.appendChild(make('div', 'lane ' + className));
      },
      canvas,
      clampScale,
      draw,
      reveal,
      setScale,
    };
  };

  // The table's items, in pieces that are filled while they are near the window. `rowsOf` makes an item's rows.
  const longTable = (columns, rowsOf) => {
    const table = document.querySelector('table');
    const itemsAPiece = 100;
    const mostOnPaper = 5000;
    let shown = [];
    let pieces = [];

    const fill = (piece) => {
      if (piece.filled) return;
      piece.body.replaceChildren(...shown.slice(piece.first, piece.first + itemsAPiece).flatMap(rowsOf));
      piece.filled = true;
    };

    const empty = (piece, height) => {
      const cell = make('td');
      cell.colSpan = columns;
      cell.style.height = height + 'px';
      const row = make('tr', 'spacer');
      row.appendChild(cell);
      piece.body.replaceChildren(row);
      piece.filled = false;
    };

    const observer = new IntersectionObserver((entries) => {
      for (const entry of entries) {
        const piece = pieces[entry.target.dataset.piece];
        if (!piece || piece.body !== entry.target) continue;
        if (entry.isIntersecting)
          fill(piece);
        else if (piece.filled)
          empty(piece, entry.boundingClientRect.height);
      }
    }, { rootMargin: '1500px' });

    const show = (items) => {
      shown = items;
      observer.disconnect();
      for (const piece of pieces) piece.body.remove();
      pieces = [];
      for (let first = 0; first < shown.length; first += itemsAPiece) {
        const piece = { first, body: make('tbody'), filled: false };
        piece.body.dataset.piece = pieces.length;
        empty(piece, Math.min(itemsAPiece, shown.length - first) * 50);
        pieces.push(piece);
      }
      table.append(...pieces.map((piece) => piece.body));
      if (pieces.length) fill(pieces[0]);
      for (const piece of pieces) observer.observe(piece.body);
      byId('none').hidden = shown.length !== 0;
    };

    window.addEventListener('beforeprint', () => {
      pieces.forEach((piece, i) => {
        if (i < mostOnPaper / itemsAPiece)
          fill(piece);
        else
          empty(piece, 0);
      });
      if (shown.length > mostOnPaper) byId('count').textContent += ', the first ' + mostOnPaper + ' printed';
    });

    return {
      show,
      refill : () => {
        for (const piece of pieces) {
          if (!piece.filled) continue;
          piece.filled = false;
          fill(piece);
        }
      },
      // Scrolls to the row of an item that is shown.
      reveal : (item, rowId, focus) => {
        fill(pieces[Math.floor(shown.indexOf(item) / itemsAPiece)]);
        const row = byId(rowId);
        row.scrollIntoView({ block: 'center' });
        if (focus) row.focus({ preventScroll: true });
      },
    };
  };

  // Appends a text in which the words that are searched stand out.
  const marked = (element, text, words) => {
    const lower = text.toLowerCase();
    let at = 0;
    if (words && lower.length === text.length) {
      for (let found = lower.indexOf(words); found >= 0; found = lower.indexOf(words, at)) {
        element.append(text.slice(at, found), make('mark', '', text.slice(found, found + words.length)));
        at = found + words.length;
      }
    }
    element.append(text.slice(at));
    return element;
  };

  const legend = (entries) => {
    for (const [className, text] of entries) byId('legend').append(make('span', 'swatch ' + className), text);
  };

  // Of these, one is chosen at a time: [word, title, class].
  const choices = (id, entries) => {
    for (const [word, title, className] of entries) {
      const label = make('label', className);
      const input = label.appendChild(make('input'));
      input.type = 'radio';
      input.name = id;
      input.value = word;
      label.append(title);
      byId(id).appendChild(label);
    }
  };
  const choose = (id, word) => {
    for (const input of byId(id).querySelectorAll('input')) input.checked = input.value === word;
  };

  // What is shown is kept in the location's hash. `state` has its keys, with "q" for what is searched.
  const readHash = (state) => {
    const hash = new URLSearchParams(location.hash.slice(1));
    for (const key of Object.keys(state)) state[key] = hash.get(key) || '';
  };
  const writeHash = (state) => {
    const hash = new URLSearchParams(Object.entries(state).filter(([, value ]) => value !== ''));
    history.replaceState(null, '', '#' + hash);
  };

  // `ids` are those of the choices, each named as the key that it sets.
  const controls = (state, ids, apply) => {
    for (const id of ids) {
      byId(id).addEventListener('change', (event) => {
        state[id] = event.target.value;
        state.q = byId('q').value; // perhaps typed just now
        writeHash(state);
        apply();
      });
    }
    let typing = 0;
    byId('q').addEventListener('input', () => {
      clearTimeout(typing);
      typing = setTimeout(() => {
        state.q = byId('q').value;
        writeHash(state);
        apply();
      }, 150);
    });
    byId('controls').addEventListener('submit', (event) => event.preventDefault());
    document.addEventListener('keydown', (event) => {
      if (event.key === '/' && event.target.tagName !== 'INPUT') {
        event.preventDefault();
        byId('q').focus();
      }
    });
    window.addEventListener('afterprint', apply);
  };

  // Arrow keys walk from mark to mark; `show` is given the number of the one to go to, by `positionOf` among `count`.
  const walking = (canvas, count, positionOf, show) => {
    canvas.addEventListener('keydown', (event) => {
      const button = event.target.closest('[data-mark]');
      const steps = { ArrowRight: 1, ArrowLeft: -1, Home: -count, End: count };
      if (!button || !(event.key in steps)) return;
      event.preventDefault();
      const position = positionOf(Number(button.dataset.mark)) + steps[event.key];
      const next = show(Math.min(Math.max(position, 0), count - 1));
      canvas.querySelector('[data-mark="' + next + '"]')?.focus({ preventScroll: true });
    });
  };

  return {
    data : JSON.parse(byId('data').textContent),
    byId,
    make,
    day,
    clock,
    exact,
    duration,
    counted,
    lastAtMost,
    spread,
    timeline,
    longTable,
    marked,
    legend,
    choices,
    choose,
    readHash,
    writeHash,
    controls,
    walking,
  };
})();
