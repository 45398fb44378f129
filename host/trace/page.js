(() => {
  const {
    data, byId, make, day, clock, exact, counted, lastAtMost, spread, timeline, longTable, marked, legend, choices,
    choose, readHash, writeHash, controls, walking,
  } = Page;
  const kinds = ['call', 'event', 'log'];

  const rows = data.rows.map(([us, kind, thread, object, name, text, more, took], index) => (
    { index, us, ms: us / 1000, kind: kinds[kind], thread, object, name: data.names[name], text, took,
      failed: kind !== 2 && more !== null, meaning: kind === 2 ? more : '' }));
  const whoOf = (row) => (row.kind === 'log' ? 'log' : data.threads[row.thread]);
  const classOf = (row) => row.kind + (row.failed ? ' failed' : '');
  // "Start" of DeviceWatcher.Start, and what the log says of itself.
  const shortOf = (row) => (row.kind === 'log' ? row.meaning || row.text : row.name.slice(row.name.indexOf('.') + 1));

  const long = (us) => {
    if (us < 0) return '−' + long(-us);
    if (us < 1000) return us + ' µs';
    return us < 1e6 ? (us / 1000).toFixed(us < 1e5 ? 1 : 0) + ' ms' : (us / 1e6).toFixed(us < 1e8 ? 2 : 0) + ' s';
  };

  // Each line has its room, however close the next one follows, and a silence takes not much more.
  const line = spread(rows.map((row) => row.ms), (step) => 14 + 24 * Math.log10(1 + step), 100);
  const whole = line.extent + 160;
  for (const row of rows) {
    row.left = line.places[row.index];
    row.right = row.took === null ? row.left : Math.max(row.left, line.placeOf(row.ms + row.took / 1000));
  }

  const state = { show: '', lanes: '', q: '', line: '' };
  const start = rows.length ? rows[0].ms : 0;
  let shown = rows;
  let chosen = null;
  let words = '';
  let lanes = [];

  // The busiest have a lane of their own.
  const mostLanes = 12;
  const makeLanes = () => {
    const of = state.lanes === 'object' ? (row) => row.object : (row) => row.thread;
    const titleOf = state.lanes === 'object' ? (key) => (key < 0 ? 'of no object' : data.objects[key])
      : (key) => 'Thread ' + data.threads[key];
    const groups = new Map();
    for (const row of rows) {
      if (row.kind === 'log') continue;
      if (!groups.has(of(row))) groups.set(of(row), []);
      groups.get(of(row)).push(row);
    }
    const busiest = [...groups].sort((a, b) => b[1].length - a[1].length);
    const own = new Set(busiest.slice(0, busiest.length > mostLanes ? mostLanes - 1 : mostLanes).map(([key]) => key));
    lanes = [...groups].filter(([key]) => own.has(key)).map(([key, ofKey]) => ({ title: titleOf(key), rows: ofKey }));
    const others = rows.filter((row) => row.kind !== 'log' && !own.has(of(row)));
    if (others.length) lanes.push({ title: 'the ' + (groups.size - own.size) + ' others', rows: others });
    const log = rows.filter((row) => row.kind === 'log');
    if (log.length) lanes.unshift({ title: 'Log', rows: log, className: 'log' });
    byId('labels').replaceChildren();
    for (const lane of document.querySelectorAll('.lane')) lane.remove();
    for (const lane of lanes) {
      lane.lefts = lane.rows.map((row) => row.left);
      let reach = 0;
      lane.reach = lane.rows.map((row) => (reach = Math.max(reach, row.right)));
      lane.element = chart.addLane(lane.className || '', lane.title);
    }
  };

  const isMatch = (row) => row.matches !== false;

  const drawLane = (lane, from, to, scale) => {
    const drawn = [];
    let taken = -Infinity;
    let takenBy = '';
    let i = lastAtMost(lane.reach, from);
    for (; i < lane.rows.length && lane.lefts[i] <= to; ++i) {
      const row = lane.rows[i];
      const left = row.left * scale;
      const dim = isMatch(row) ? '' : ' dim';
      // Of what would lie upon each other, one is drawn.
      if (left < taken && classOf(row) + dim === takenBy && row !== chosen) continue;
      taken = left + 3;
      takenBy = classOf(row) + dim;
      const mark = make('button', 'mark ' + classOf(row) + dim + (row === chosen ? ' chosen' : ''));
      mark.type = 'button';
      mark.tabIndex = row === (chosen || rows[0]) ? 0 : -1;
      mark.dataset.mark = row.index;
      mark.title = row.text + (row.meaning ? '\n' + row.meaning : '') + '\n' + exact(row.ms);
      mark.setAttribute('aria-label', row.text);
      const width = Math.max(5, (row.right - row.left) * scale - 2);
      mark.style.left = left + 'px';
      if (row.kind === 'call') mark.style.width = width + 'px';
      drawn.push(mark);
      const begin = row.kind === 'call' ? Math.min(left + width, left + 40) : left + 12;
      const room = (i + 1 < lane.rows.length ? lane.lefts[i + 1] : whole) * scale - begin - 4;
      if (room < 34) continue;
      const said = make('span', 'said' + dim + (row.failed ? ' failed' : ''), shortOf(row));
      said.style.left = (row.kind === 'call' ? Math.max(begin, left + width) : begin) + 'px';
      said.style.maxWidth = Math.min(room, 260) + 'px';
      drawn.push(said);
    }
    lane.element.replaceChildren(...drawn);
  };

  const chart = timeline({
    line, whole, mostScale: 4,
    pauseTitle: ' in which nothing happens',
    lengthText: (ms) => long(Math.round(ms * 1000)),
    tickOf: (time) => ({ text: '+' + ((time - start) / 1000).toFixed(3) + ' s', width: 90 }),
    drawLanes: (from, to, scale) => {
      for (const lane of lanes) drawLane(lane, from, to, scale);
    },
  });

  const rowOf = (row) => {
    const element = make('tr', classOf(row) + (row === chosen ? ' chosen' : ''));
    element.id = 'line-' + row.index;
    element.tabIndex = -1;
    const time = make('td', 'time', exact(row.ms));
    if (row.kind !== 'log') time.appendChild(make('small', '', ' ' + String(row.us % 1000).padStart(3, '0')));
    const before = rows[row.index - 1];
    const cell = make('td', 'record');
    cell.appendChild(marked(make('div', 'message'), row.text, words));
    if (row.meaning) cell.appendChild(marked(make('div', 'meaning'), row.meaning, words));
    if (row.kind === 'log') cell.title = row.name;
    const since = before ? row.us - before.us : 0;
    element.append(time, make('td', 'since' + (since >= 1e5 ? ' silence' : ''), before ? '+' + long(since) : ''),
      make('td', 'who', whoOf(row)), cell, make('td', 'where', row.took === null ? '' : long(row.took)));
    return element;
  };
  const table = longTable(5, (row) => [rowOf(row)]);

  const shows = {
    call: (row) => row.kind === 'call', event: (row) => row.kind === 'event', log: (row) => row.kind === 'log',
    failed: (row) => row.failed,
  };

  const applyFilter = () => {
    words = state.q.trim().toLowerCase();
    const has = (text) => text.toLowerCase().includes(words);
    const ofKind = shows[state.show] || (() => true);
    for (const row of rows) {
      row.matches = ofKind(row) && (words === '' || has(row.text) || has(row.meaning) || has(whoOf(row)) ||
        exact(row.ms).includes(words) || (row.kind === 'log' && has(row.name)));
    }
    shown = rows.filter(isMatch);
    choose('show', state.show);
    if (byId('q').value !== state.q) byId('q').value = state.q;
    table.show(shown);
    byId('count').textContent = shown.length === rows.length ? counted(rows.length, 'line') :
      shown.length.toLocaleString('en') + ' of ' + counted(rows.length, 'line');
    chart.draw();
  };

  const chooseRow = (row) => {
    chosen = row;
    state.line = row ? String(row.index + 1) : '';
    table.refill();
    if (row) chart.reveal(row.left);
    chart.draw();
  };

  const showRow = (row, focus) => {
    if (!row.matches) {
      state.show = '';
      state.q = '';
      applyFilter();
    }
    chooseRow(row);
    writeHash(state);
    table.reveal(row, 'line-' + row.index, focus);
  };

  byId('name').textContent = data.name;
  document.title = data.name;
  const count = (test, word) => {
    const found = rows.filter(test).length;
    return found ? counted(found, word) : '';
  };
  byId('summary').textContent = rows.length === 0 ? 'An empty trace: nothing was asked of the simulated platform.' : [
    count(shows.call, 'call'), count(shows.event, 'event'), count(shows.failed, 'failure'),
    data.log ? counted(rows.filter(shows.log).length, 'record') + ' of ' + data.log : '',
    day(start) + ' ' + clock(start) + ', ' + long(rows[rows.length - 1].us - rows[0].us),
    data.left ? 'without the ' + counted(data.left, 'older line') : '',
  ].filter(Boolean).join(' · ');
  legend([['call', 'call'], ['event', 'event'], ...(rows.some(shows.log) ? [['log', 'the library’s log']] : []),
    ['failed', 'failed'], ['pause', 'a tenth of a second or more, drawn short']]);
  choices('show', [['', 'All', ''], ['call', 'Calls', ''], ['event', 'Events', ''], ['failed', 'Failures', ''],
    ['log', 'Log', '']].filter(([word]) => word === '' || rows.some(shows[word])));
  choices('lanes', [['', 'by thread', ''], ['object', 'by object', '']]);
  byId('time').hidden = rows.length === 0;
  byId('list').hidden = rows.length === 0;

  const applyLanes = () => {
    choose('lanes', state.lanes);
    makeLanes();
    applyFilter();
  };
  controls(state, ['show', 'lanes'], applyLanes);
  chart.canvas.addEventListener('click', (event) => {
    const mark = event.target.closest('[data-mark]');
    if (mark) showRow(rows[mark.dataset.mark], true);
  });
  walking(chart.canvas, rows.length, (index) => index, (position) => {
    chooseRow(rows[position]);
    writeHash(state);
    return position;
  });
  const apply = () => {
    readHash(state);
    applyLanes();
    const row = rows[Number(state.line) - 1];
    if (row) showRow(row, false); else chooseRow(null);
  };
  window.addEventListener('hashchange', apply);

  chart.setScale(chart.clampScale(1));
  apply();
})();
