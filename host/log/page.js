'use strict';
(() => {
  const data = JSON.parse(document.getElementById('data').textContent);
  const byId = (id) => document.getElementById(id);
  const silenceMs = data.gapMs;
  const ends = ['none', 'good', 'bad'];

  const make = (tag, className, text) => {
    const element = document.createElement(tag);
    if (className) element.className = className;
    if (text !== undefined) element.textContent = text;
    return element;
  };

  const classOf = (flow) => (flow === 'search' ? 'search-flow' : flow); // "search" is the form's
  const flows = data.flows.map(([word, title, withoutEnd]) => ({ word, title, withoutEnd, lane: null, runs: [] }));
  const runs = data.runs.map(([flow, title, end, text, begin, last, until], index) => (
    { index, flow: flows[flow], title, end: ends[end], text, begin, last, until, records: [], longest: 0 }));
  const records = data.records.map(([ms, run, flow, line, where, message, meaning], index) => (
    { index, ms, run: run < 0 ? null : runs[run], flow: flows[flow], line, where: data.functions[where] || '',
      message, meaning, since: null }));

  let before = null;
  for (const record of records) {
    const { run } = record;
    const previous = run ? run.records[run.records.length - 1] : before;
    if (previous && previous.ms !== null && record.ms !== null) record.since = record.ms - previous.ms;
    if (run) {
      run.longest = Math.max(run.longest, run.records.length ? record.since : 0);
      run.records.push(record);
    } else {
      before = record;
    }
  }
  for (const run of runs) run.flow.runs.push(run);

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

  const isOneDay = new Set(runs.map((run) => day(run.begin))).size < 2;
  const stamp = (ms) => (isOneDay ? '' : day(ms) + ' ') + clock(ms);

  // The time line: what lasts longer than `longest` without a record is drawn as long as that, and marked.
  const longest = 5000;
  const times = Float64Array.from([...records.filter((record) => record.ms !== null).map((record) => record.ms),
    ...runs.map((run) => run.until)]).sort();
  const places = new Float64Array(times.length);
  const pauses = [];
  for (let i = 1; i < times.length; ++i) {
    const step = times[i] - times[i - 1];
    if (step > longest) pauses.push({ place: places[i - 1], length: step });
    places[i] = places[i - 1] + Math.min(step, longest);
  }
  const extent = places.length ? places[places.length - 1] : 0;
  const tail = Math.max(500, extent * 0.12); // room for the arrow and the words of what has no end
  const whole = extent + tail;
  const lastAtMost = (array, value) => {
    let low = 0;
    let high = array.length;
    while (low < high) {
      const middle = (low + high) >> 1;
      if (array[middle] <= value) low = middle + 1; else high = middle;
    }
    return Math.max(0, low - 1);
  };
  const placeOf = (ms) => {
    const i = lastAtMost(times, ms);
    return places[i] + Math.min(Math.max(0, ms - times[i]), longest);
  };
  const timeAt = (place) => {
    const i = lastAtMost(places, place);
    return times[i] + (place - places[i]);
  };
  for (const run of runs) {
    // The lane has the rest of the title.
    run.about = run.title.startsWith(run.flow.title + ' of ') ? ' · ' + run.title.slice(run.flow.title.length + 4) : '';
    run.left = placeOf(run.begin);
    run.right = Math.max(run.left, placeOf(run.end === 'none' ? run.until : run.last));
  }

  const scroll = byId('scroll');
  const canvas = byId('canvas');
  const lanes = flows.filter((flow) => flow.runs.length);
  const axis = canvas.appendChild(make('div', 'axis'));
  const shade = canvas.appendChild(make('div', 'shade'));
  for (const flow of lanes) {
    flow.lane = canvas.appendChild(make('div', 'lane ' + classOf(flow.word)));
    byId('labels').appendChild(make('div', classOf(flow.word) + ' flow', flow.title));
    flow.runs.sort((a, b) => a.left - b.left);
    let reach = 0;
    flow.reach = flow.runs.map((run) => (reach = Math.max(reach, run.right)));
  }
  const walk = [...runs].sort((a, b) => a.left - b.left || a.index - b.index);
  walk.forEach((run, position) => { run.position = position; });

  let scale = 1; // pixels a millisecond
  let chosen = null;
  const fitScale = () => scroll.clientWidth / whole;
  const clampScale = (wanted) => Math.min(Math.max(wanted, fitScale()), Math.max(1, fitScale()), 16e6 / whole);

  const drawRun = (run, room) => {
    const width = Math.max(6, (run.right - run.left) * scale);
    const button = make('button', 'run ' + run.end);
    button.type = 'button';
    button.style.left = run.left * scale + 'px';
    button.style.width = width + 'px';
    button.title = run.title + ': ' + run.text + '\n' + day(run.begin) + ' ' + exact(run.begin);
    button.setAttribute('aria-label', stamp(run.begin) + ' ' + run.title + ': ' + run.text);
    button.tabIndex = run === (chosen || walk[0]) ? 0 : -1;
    button.dataset.run = run.index;
    button.classList.toggle('chosen', run === chosen);
    button.classList.toggle('dim', run.matches === false);
    for (let i = 1; i < run.records.length; ++i) {
      const record = run.records[i];
      if (record.since >= silenceMs) {
        const silence = button.appendChild(make('span', 'silence'));
        const begin = placeOf(record.ms - record.since);
        silence.style.left = (begin - run.left) * scale + 'px';
        silence.style.width = (placeOf(record.ms) - begin) * scale + 'px';
      }
    }
    const label = run.end === 'none' ? 'no end, ' + duration(run.until - run.begin) + run.about : run.about.slice(3) || run.text;
    const inside = width >= 90;
    if (!inside && room - width < 40) return button;
    const text = button.appendChild(make('span', 'text ' + (inside ? 'inside' : 'outside'), label));
    text.style.left = (inside ? 0 : width) + 'px';
    text.style.maxWidth = (inside ? width - 4 : room - width - 6) + 'px';
    return button;
  };

  const drawLane = (flow, from, to) => {
    const drawn = [];
    let i = flow.reach.findIndex((reach) => reach >= from);
    for (; i >= 0 && i < flow.runs.length && flow.runs[i].left <= to; ++i) {
      const run = flow.runs[i];
      const next = flow.runs[i + 1];
      if (run.right >= from) drawn.push(drawRun(run, ((next ? next.left : whole) - run.left) * scale));
    }
    flow.lane.replaceChildren(...drawn);
  };

  const drawAxis = (from, to) => {
    const drawn = [];
    for (const { place, length } of pauses) {
      if (place + longest < from || place > to) continue;
      const pause = make('div', 'pause');
      pause.style.left = place * scale + 'px';
      pause.style.width = longest * scale + 'px';
      pause.title = duration(length) + ' without a record';
      if (longest * scale > 45) pause.appendChild(make('span', '', duration(length)));
      drawn.push(pause);
    }
    // A time at each pause's end, and in what is long without one.
    let free = -Infinity;
    let shownDay = '';
    const tick = (place) => {
      if (place < free || place < from || place > Math.min(to, extent)) return;
      const time = timeAt(place);
      const date = isOneDay || day(time) === shownDay ? '' : day(time) + ' ';
      shownDay = day(time);
      const label = axis.appendChild(make('div', 'tick', date + (scale > 0.13 ? exact(time) : clock(time))));
      label.style.left = place * scale + 'px';
      free = place + (date ? 160 : 90) / scale;
    };
    axis.replaceChildren();
    const step = 130 / scale;
    const starts = [0, ...pauses.map(({ place }) => place + longest)];
    starts.forEach((start, i) => {
      const end = i < pauses.length ? pauses[i].place : whole;
      if (end < from || start > to) return;
      for (let place = start; place === start || place < end - step / 2; place += step) tick(place);
    });
    shade.replaceChildren(...drawn);
  };

  const drawTimeline = () => {
    const from = (scroll.scrollLeft - scroll.clientWidth) / scale;
    const to = (scroll.scrollLeft + 2 * scroll.clientWidth) / scale;
    const focused = document.activeElement && document.activeElement.dataset.run;
    for (const flow of lanes) drawLane(flow, from, to);
    drawAxis(from, to);
    if (focused !== undefined) canvas.querySelector('[data-run="' + focused + '"]')?.focus({ preventScroll: true });
  };

  const setScale = (wanted, width = scroll.clientWidth) => {
    const middle = (scroll.scrollLeft + scroll.clientWidth / 2) / scale;
    scale = wanted;
    canvas.style.width = Math.max(width, whole * scale) + 'px';
    scroll.scrollLeft = middle * scale - scroll.clientWidth / 2;
    drawTimeline();
  };

  // The records, in pieces that are filled while they are near the window.
  const table = document.querySelector('table');
  const rowsAPiece = 100;
  let shown = records;
  let pieces = [];
  let words = '';

  const marked = (element, text) => {
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

  const headOf = (run) => {
    const row = make('tr', 'head ' + classOf(run.flow.word));
    const cell = row.appendChild(make('th'));
    cell.colSpan = 5;
    cell.scope = 'rowgroup';
    cell.append(make('span', 'time', day(run.begin) + ' ' + clock(run.begin) + '  '),
      marked(make('span', 'flow'), run.title), ': ', make('span', run.end, run.text));
    if (run.end === 'none') cell.appendChild(make('div', 'meaning', run.flow.withoutEnd));
    row.classList.toggle('chosen', run === chosen);
    return row;
  };

  const rowOf = (record) => {
    const row = make('tr', classOf(record.flow.word));
    row.id = 'record-' + record.index;
    row.tabIndex = -1;
    const { run, since } = record;
    const silent = since >= silenceMs && run !== null;
    const isLongest = silent && since === run.longest;
    const sinceCell = make('td', 'since' + (silent ? ' silence' : '') + (isLongest ? ' longest' : ''),
      since === null ? '' : (since < 0 ? '' : '+') + duration(since));
    if (isLongest) sinceCell.title = 'The longest silence of this run';
    const cell = make('td', 'record');
    cell.appendChild(marked(make('div', 'message'), record.message));
    if (record.meaning) cell.appendChild(marked(make('div', 'meaning'), record.meaning));
    row.append(make('td', 'time', exact(record.ms)), sinceCell, make('td', 'flow', record.flow.word), cell,
      make('td', 'where', record.ms === null ? '' : record.where + ':' + record.line));
    row.classList.toggle('chosen', run !== null && run === chosen);
    return row;
  };

  const fill = (piece) => {
    if (piece.filled) return;
    const rows = [];
    for (const record of shown.slice(piece.first, piece.first + rowsAPiece)) {
      if (record.run && record.run.records[0] === record) rows.push(headOf(record.run));
      rows.push(rowOf(record));
    }
    piece.body.replaceChildren(...rows);
    piece.filled = true;
  };

  const empty = (piece, height) => {
    const cell = make('td');
    cell.colSpan = 5;
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
      if (entry.isIntersecting) fill(piece);
      else if (piece.filled) empty(piece, entry.boundingClientRect.height);
    }
  }, { rootMargin: '1500px' });

  const showRecords = () => {
    observer.disconnect();
    for (const piece of pieces) piece.body.remove();
    pieces = [];
    for (let first = 0; first < shown.length; first += rowsAPiece) {
      const piece = { first, body: make('tbody'), filled: false };
      piece.body.dataset.piece = pieces.length;
      empty(piece, Math.min(rowsAPiece, shown.length - first) * 50);
      pieces.push(piece);
    }
    table.append(...pieces.map((piece) => piece.body));
    if (pieces.length) fill(pieces[0]);
    for (const piece of pieces) observer.observe(piece.body);
    byId('none').hidden = shown.length !== 0;
    byId('count').textContent = shown.length === records.length ? counted(records.length, 'record') :
      shown.length.toLocaleString('en') + ' of ' + counted(records.length, 'record');
  };

  // What is shown: a flow, a text, a run. It is kept in the location's hash.
  const state = { flow: '', q: '', run: '' };

  const readHash = () => {
    const hash = new URLSearchParams(location.hash.slice(1));
    state.flow = flows.some((flow) => flow.word === hash.get('flow')) ? hash.get('flow') : '';
    state.q = hash.get('q') || '';
    state.run = hash.get('run') || '';
  };
  const writeHash = () => {
    const hash = new URLSearchParams(Object.entries(state).filter(([, value]) => value !== ''));
    history.replaceState(null, '', '#' + hash);
  };

  const applyFilter = () => {
    words = state.q.trim().toLowerCase();
    const has = (text) => text.toLowerCase().includes(words);
    for (const run of runs) {
      run.hasWords = words !== '' && has(run.title);
      run.matches = false;
    }
    shown = records.filter((record) => {
      const matches = (state.flow === '' || record.flow.word === state.flow) &&
        (words === '' || (record.run !== null && record.run.hasWords) || has(record.message) || has(record.meaning) ||
          has(record.where) || exact(record.ms).includes(words));
      if (matches && record.run) record.run.matches = true;
      return matches;
    });
    for (const input of byId('flows').querySelectorAll('input')) input.checked = input.value === state.flow;
    if (byId('q').value !== state.q) byId('q').value = state.q;
    showRecords();
    drawTimeline();
  };

  const chooseRun = (run) => {
    chosen = run;
    state.run = run ? String(run.index + 1) : '';
    for (const piece of pieces) {
      if (!piece.filled) continue;
      piece.filled = false;
      fill(piece);
    }
    drawTimeline();
  };

  const reveal = (run) => {
    const left = run.left * scale;
    if (left < scroll.scrollLeft || left > scroll.scrollLeft + scroll.clientWidth - 40) {
      scroll.scrollLeft = left - scroll.clientWidth / 3;
    }
  };

  const showRun = (run, focus) => {
    if (!run.matches) {
      state.flow = '';
      state.q = '';
      applyFilter();
    }
    chooseRun(run);
    reveal(run);
    drawTimeline();
    writeHash();
    const first = run.records.find((record) => shown.includes(record));
    const piece = pieces[Math.floor(shown.indexOf(first) / rowsAPiece)];
    fill(piece);
    const row = byId('record-' + first.index);
    row.scrollIntoView({ block: 'center' });
    if (focus) row.focus({ preventScroll: true });
  };

  const summary = byId('summary');
  byId('name').textContent = data.name;
  document.title = data.name;
  const open = runs.filter((run) => run.end === 'none');
  const timed = records.filter((record) => record.ms !== null);
  summary.textContent = [
    counted(records.length, 'record') + ' in ' + counted(runs.length, 'run'),
    timed.length ? day(timed[0].ms) + ' ' + clock(timed[0].ms) + ' to ' + day(timed[timed.length - 1].ms) + ' ' +
      clock(timed[timed.length - 1].ms) : '',
    open.length ? open.length.toLocaleString('en') + ' without an end' : '',
    data.left ? 'without the ' + counted(data.left, 'older record') : '',
  ].filter(Boolean).join(' · ');
  open.sort((a, b) => (b.until - b.begin) - (a.until - a.begin));
  for (const run of open.slice(0, 12)) {
    const button = make('button', '', stamp(run.begin) + ' ' + run.title + ' · ' + run.text);
    button.type = 'button';
    button.addEventListener('click', () => showRun(run, true));
    byId('open').appendChild(make('li')).appendChild(button);
  }
  if (open.length > 12) byId('open').appendChild(make('li', '', 'and ' + (open.length - 12) + ' more'));
  for (const [className, text] of [['', 'ended well'], ['run bad', 'ended badly'], ['run none', 'no end is logged'],
    ['silence', 'a second or more of silence'], ['pause', 'time left out']]) {
    byId('legend').append(make('span', 'swatch ' + className), text);
  }
  for (const flow of [{ word: '', title: 'All' }, ...flows.filter((each) => records.some((one) => one.flow === each))]) {
    const label = make('label', classOf(flow.word));
    const input = label.appendChild(make('input'));
    input.type = 'radio';
    input.name = 'flow';
    input.value = flow.word;
    label.append(flow.title);
    byId('flows').appendChild(label);
  }
  byId('time').hidden = lanes.length === 0;

  byId('flows').addEventListener('change', (event) => {
    state.flow = event.target.value;
    state.q = byId('q').value; // perhaps typed just now
    writeHash();
    applyFilter();
  });
  let typing = 0;
  byId('q').addEventListener('input', () => {
    clearTimeout(typing);
    typing = setTimeout(() => {
      state.q = byId('q').value;
      writeHash();
      applyFilter();
    }, 150);
  });
  byId('controls').addEventListener('submit', (event) => event.preventDefault());
  canvas.addEventListener('click', (event) => {
    const button = event.target.closest('[data-run]');
    if (button) showRun(runs[button.dataset.run], true);
  });
  canvas.addEventListener('keydown', (event) => {
    const button = event.target.closest('[data-run]');
    const steps = { ArrowRight: 1, ArrowLeft: -1, Home: -walk.length, End: walk.length };
    if (!button || !(event.key in steps)) return;
    event.preventDefault();
    const position = runs[button.dataset.run].position + steps[event.key];
    const next = walk[Math.min(Math.max(position, 0), walk.length - 1)];
    chooseRun(next);
    reveal(next);
    drawTimeline();
    canvas.querySelector('[data-run="' + next.index + '"]').focus({ preventScroll: true });
    writeHash();
  });
  document.addEventListener('keydown', (event) => {
    if (event.key === '/' && event.target.tagName !== 'INPUT') {
      event.preventDefault();
      byId('q').focus();
    }
  });
  scroll.addEventListener('scroll', () => requestAnimationFrame(drawTimeline));
  byId('in').addEventListener('click', () => setScale(clampScale(scale * 2)));
  byId('out').addEventListener('click', () => setScale(clampScale(scale / 2)));
  byId('fit').addEventListener('click', () => setScale(fitScale()));
  window.addEventListener('resize', () => setScale(clampScale(scale)));
  const apply = () => {
    readHash();
    applyFilter();
    const run = runs[Number(state.run) - 1];
    if (run) showRun(run, false); else chooseRun(null);
  };
  window.addEventListener('hashchange', apply);

  // On paper there is no scrolling.
  const mostOnPaper = 5000;
  const paperWidth = 560; // of A4 and Letter, beside the lanes' names
  let scaleBefore = 1;
  window.addEventListener('beforeprint', () => {
    scaleBefore = scale;
    setScale(paperWidth / whole, paperWidth);
    for (const piece of pieces.slice(0, mostOnPaper / rowsAPiece)) fill(piece);
    for (const piece of pieces.slice(mostOnPaper / rowsAPiece)) empty(piece, 0);
    if (shown.length > mostOnPaper) byId('count').textContent += ', the first ' + mostOnPaper + ' printed';
  });
  window.addEventListener('afterprint', () => {
    setScale(scaleBefore);
    applyFilter();
  });

  setScale(clampScale(0.012));
  apply();
})();
